// "Cut Paste": used on a selection it remembers the selected paths in the menu configuration;
// used on a folder's background while paths are remembered, it moves them into that folder.
#include "actions/Alerts.h"
#include "actions/FileHash.h"
#include "actions/ItemTransfer.h"
#include "actions/NewFile.h"
#include "actions/PathName.h"
#include "actions/TransferReport.h"
#include "config/Localization.h"
#include "config/MenuKeys.h"
#include "config/PXMenuManager.h"
#include "extension/FinderSync.h"

#include <sys/stat.h>

namespace px {

namespace {

void storeCutList(const std::vector<std::string>& paths) {
    plist::Array values;
    values.reserve(paths.size());
    for (const auto& path : paths)
        values.emplace_back(path);
    PXMenuManager::updateMenuKey(menukey::kRightMenu, "Cut Paste", "cutPaths",
                                 plist::Value::makeArray(std::move(values)));
}

bool sameFolder(const std::string& a, const std::string& b) {
    struct stat first {
    }, second{};
    if (::stat(a.c_str(), &first) != 0 || ::stat(b.c_str(), &second) != 0) return a == b;
    return first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

void pasteOne(const std::string& source, const std::string& folder) {
    const std::string target =
        path::appendingPathComponent(folder, path::lastPathComponent(source));
    newfile::_replaceFileAlert(target, [&](const std::string& finalPath,
                                           transfer::Existing existing) {
        if (existing == transfer::Existing::Replace && transfer::replacesSource(source, finalPath))
            return transfer::reportSourceKept(finalPath);
        auto moved = transfer::moveItem(source, finalPath, existing);
        if (moved.isError()) transfer::reportFailure(moved.error(), source, folder);
    });
}

// Moves the cut items into the folder, on this thread. False, with nothing moved, when the
// folder is the one they were cut from.
bool paste(const std::vector<std::string>& cutPaths, const std::string& folder) {
    if (sameFolder(folder, path::deletingLastPathComponent(cutPaths.front()))) {
        alert::alertWithMsg(localized("Paste Same Folder Tip"));
        return false;
    }
    for (const auto& source : cutPaths)
        pasteOne(source, folder);
    return true;
}

} // namespace

void FinderSync::cutPasteItem(const PXMenuItem::Ptr& item) {
    if (!item) return;
    const std::vector<std::string> selection = selectURLs();
    if (isSelectURL || item->cutPaths.empty()) return storeCutList(selection);
    if (selection.empty()) return;
    // The folder shown; from a toolbar menu over a selected file, that file's folder.
    const std::string& first = selection.front();
    const std::string folder =
        filehash::isFolder(first) ? first : path::deletingLastPathComponent(first);
    if (!paste(item->cutPaths, folder)) return;
    storeCutList({});
}

} // namespace px
