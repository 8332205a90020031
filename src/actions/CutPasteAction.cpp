// "Cut Paste": used on a selection it remembers the selected paths in the menu configuration;
// used on a folder's background while paths are remembered, it moves them into that folder.
#include "actions/Alerts.h"
#include "actions/Commands.h"
#include "actions/ItemTransfer.h"
#include "actions/NewFile.h"
#include "actions/TransferReport.h"
#include "config/MenuKeys.h"
#include "config/PXMenuManager.h"
#include "support/FileHash.h"
#include "support/Localization.h"
#include "support/PathName.h"

#include <sys/stat.h>

namespace px::commands {

namespace {

void storeCutList(ActionContext& cx, const std::vector<std::string>& paths) {
    plist::Array values;
    values.reserve(paths.size());
    for (const auto& path : paths)
        values.emplace_back(path);
    cx.store().updateMenuKey(menukey::kRightMenu, "Cut Paste", "cutPaths",
                             plist::Value::makeArray(std::move(values)));
}

bool sameFolder(const std::string& a, const std::string& b) {
    struct stat first {
    }, second{};
    if (::stat(a.c_str(), &first) != 0 || ::stat(b.c_str(), &second) != 0) return a == b;
    return first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

void pasteOne(ActionContext& cx, const std::string& source, const std::string& folder) {
    const std::string target =
        path::appendingPathComponent(folder, path::lastPathComponent(source));
    newfile::replaceFileAlert(
        cx.ui(), target, [&](const std::string& finalPath, transfer::Existing existing) {
            if (existing == transfer::Existing::Replace &&
                transfer::replacesSource(source, finalPath))
                return transfer::reportSourceKept(cx.ui(), finalPath);
            auto moved = transfer::moveItem(source, finalPath, existing);
            if (moved.isError()) transfer::reportFailure(cx.request, moved.error(), source, folder);
        });
}

// Moves the cut items into the folder, on this thread. False, with nothing moved, when the
// folder is the one they were cut from.
bool paste(ActionContext& cx, const std::vector<std::string>& cutPaths, const std::string& folder) {
    if (sameFolder(folder, path::deletingLastPathComponent(cutPaths.front()))) {
        alert::alertWithMsg(cx.ui(), localized("Paste Same Folder Tip"));
        return false;
    }
    for (const auto& source : cutPaths)
        pasteOne(cx, source, folder);
    return true;
}

} // namespace

void cutPaste(ActionContext& cx, const PXMenuItem& item) {
    const std::vector<std::string> selection = cx.selection();
    if (cx.request.onItems() || item.cutPaths.empty()) return storeCutList(cx, selection);
    if (selection.empty()) return;
    // The folder shown; from a toolbar menu over a selected file, that file's folder.
    const std::string& first = selection.front();
    const std::string folder =
        filehash::isFolder(first) ? first : path::deletingLastPathComponent(first);
    if (!paste(cx, item.cutPaths, folder)) return;
    storeCutList(cx, {});
}

} // namespace px::commands
