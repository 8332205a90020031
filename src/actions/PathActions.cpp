// Copying the selected paths, and opening a configured common folder or file.
#include "actions/Alerts.h"
#include "actions/FileHash.h"
#include "actions/PXFile.h"
#include "config/Localization.h"
#include "extension/FinderSync.h"
#include "platform/Platform.h"
#include "support/FileIO.h"
#include "support/PXCheckPermit.h"

#include <filesystem>

namespace px {

namespace {

std::string trimmedLines(const std::string& text) {
    constexpr const char* kBlank = " \t\n\r\v\f";
    auto first = text.find_first_not_of(kBlank);
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlank) - first + 1);
}

// Opens the item with its default application; when the desktop refuses, explains how to
// grant access to it.
void openOrExplain(const std::string& path) {
    if (!platform::workspace().openURL(PXFile(path).url())) PXCheckPermit::accessPrivacy(path);
}

// A folder is opened in the file manager; a file is shown selected in its folder.
void showInFileManager(const std::string& path) {
    std::error_code error;
    auto& workspace = platform::workspace();
    bool shown = std::filesystem::is_directory(path, error) ? workspace.openURL(PXFile(path).url())
                                                            : workspace.revealInFileManager(path);
    if (!shown) PXCheckPermit::accessPrivacy(path);
}

// The chosen entry of a common path's submenu, or the common path itself without one.
void openCommonPathEntry(FinderSync& sync, const std::string& path, const PXMenuItem::Ptr& item) {
    if (item && filehash::isValid(item->serve)) return sync.openServe(item->serve, path);
    if (item && filehash::isValid(item->appName)) return sync.openWithApp(item, path);
    if (item && filehash::isValid(item->path)) return openOrExplain(item->path);
    if (item && item->key == "Show in Finder") return showInFileManager(path);
    openOrExplain(path);
}

} // namespace

void FinderSync::copyPath() {
    std::string text;
    for (const auto& url : selectURLs())
        text += url + "\n";
    auto& pasteboard = platform::pasteboard();
    pasteboard.clearContents();
    pasteboard.setString(trimmedLines(text));
}

void FinderSync::openCommonPath(const std::string& path, const PXMenuItem::Ptr& item) {
    if (!io::exists(path)) return alert::alertWithMsg(localized("Common Path Not Exist Tip"));
    PXCheckPermit::checkPermitWithPath(
        path, [this, path, item] { openCommonPathEntry(*this, path, item); }, [] {});
}

} // namespace px
