// Copying the selected paths, and opening a configured common folder or file.
#include "actions/Alerts.h"
#include "actions/Commands.h"
#include "extension/PXCheckPermit.h"
#include "platform/Platform.h"
#include "support/FileHash.h"
#include "support/FileIO.h"
#include "support/Localization.h"
#include "support/PXFile.h"

#include <filesystem>

namespace px::commands {

namespace {

std::string trimmedLines(const std::string& text) {
    constexpr const char* kBlank = " \t\n\r\v\f";
    auto first = text.find_first_not_of(kBlank);
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlank) - first + 1);
}

// Opens the item with its default application; when the desktop refuses, explains how to
// grant access to it.
void openOrExplain(ActionContext& cx, const std::string& path) {
    if (!cx.request.workspace().openURL(PXFile(path).url()))
        cx.request.permits().accessPrivacy(path);
}

// A folder is opened in the file manager; a file is shown selected in its folder.
void showInFileManager(ActionContext& cx, const std::string& path) {
    std::error_code error;
    auto& workspace = cx.request.workspace();
    bool shown = std::filesystem::is_directory(path, error) ? workspace.openURL(PXFile(path).url())
                                                            : workspace.revealInFileManager(path);
    if (!shown) cx.request.permits().accessPrivacy(path);
}

// The chosen entry of a common path's submenu, or the common path itself without one.
void openCommonPathEntry(ActionContext& cx, const std::string& path, const PXMenuItem* item) {
    if (item && filehash::isValid(item->serve)) return openService(cx, item->serve, path);
    if (item && filehash::isValid(item->appName)) return openWithApp(cx, *item, path);
    if (item && filehash::isValid(item->path)) return openOrExplain(cx, item->path);
    if (item && item->key == "Show in Finder") return showInFileManager(cx, path);
    openOrExplain(cx, path);
}

} // namespace

void copyPath(ActionContext& cx) {
    std::string text;
    for (const auto& url : cx.selection())
        text += url + "\n";
    auto& pasteboard = cx.request.pasteboard();
    pasteboard.clearContents();
    pasteboard.setString(trimmedLines(text));
}

void openCommonPath(ActionContext& cx, const std::string& path, const PXMenuItem* item) {
    if (!io::exists(path))
        return alert::alertWithMsg(cx.ui(), localized("Common Path Not Exist Tip"));
    cx.request.permits().checkPermitWithPath(
        path, [&cx, path, item] { openCommonPathEntry(cx, path, item); }, [] {});
}

} // namespace px::commands
