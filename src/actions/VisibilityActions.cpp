// Hiding and unhiding items through their folders' ".hidden" files, and the instruction that
// switches the file manager's display of hidden files.
#include "actions/Commands.h"
#include "actions/FailureLog.h"
#include "actions/HiddenFile.h"
#include "support/FileHash.h"
#include "support/Localization.h"
#include "support/PathName.h"
#include "support/Xdg.h"

#include <algorithm>
#include <optional>

namespace px::commands {

namespace {

void apply(Visibility visibility, const std::string& folder,
           const std::vector<std::string>& names) {
    for (const auto& name : names)
        if (!hiddenfile::canList(name))
            logFailure(
                {fmt::format("{:?} in {} cannot be listed in {}: the name holds a line break", name,
                             folder, hiddenfile::kFileName)});
    auto done = visibility == Visibility::Hidden ? hiddenfile::hide(folder, names)
                                                 : hiddenfile::unhide(folder, names);
    if (done.isError()) logFailure(done.error());
}

// Each item's name goes into its own folder's list, one edit per folder.
void applyToItems(Visibility visibility, const std::vector<std::string>& paths) {
    std::vector<std::pair<std::string, std::vector<std::string>>> byFolder;
    for (const auto& itemPath : paths) {
        std::string folder = path::deletingLastPathComponent(itemPath);
        auto group = std::find_if(byFolder.begin(), byFolder.end(),
                                  [&](const auto& g) { return g.first == folder; });
        if (group == byFolder.end()) group = byFolder.insert(byFolder.end(), {folder, {}});
        group->second.push_back(path::lastPathComponent(itemPath));
    }
    for (const auto& [folder, names] : byFolder)
        if (!folder.empty()) apply(visibility, folder, names);
}

// The folder's entries whose names do not begin with ".", in name order.
std::vector<std::string> visibleEntries(const std::string& folder) {
    std::vector<std::string> names = filehash::folderEntries(folder);
    std::erase_if(names, [](const std::string& name) { return name.starts_with('.'); });
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

void changeVisibility(ActionContext& cx, Visibility visibility) {
    if (visibility == Visibility::Unchanged) return;
    if (cx.request.onItems()) return applyToItems(visibility, cx.selection());
    const std::string& folder = cx.request.target();
    if (!filehash::isValid(folder)) return;
    std::vector<std::string> names = visibleEntries(folder);
    if (!names.empty()) apply(visibility, folder, names);
}

void showSystemFiles(ActionContext& cx, const PXMenuItem& item) {
    auto& ui = cx.ui();
    const std::string show = localized("System Hide Files Show");
    const std::string hide = localized("System Hide Files Hide");
    int choice = ui.runAlert({localized(item.key),
                              localized("System Hide Files Tip"),
                              {show, hide, localized("Cancel")}});
    if (choice != 1000 && choice != 1001) return;
    const bool showing = choice == 1000;
    const std::string argument = showing ? "true" : "false";
    cx.request.pasteboard().copyTrimmed(formatLocalizedText(item.command, std::span(&argument, 1)));
    int paste = ui.runAlert(
        {showing ? show : hide,
         localized("Copy Instruction Tip"),
         {localized("Paste to Terminal"), localized("Paste to iTerm2"), localized("Cancel")}});
    if (paste == 1000) openService(cx, "New Terminal at Folder", xdg::userDirectory("DESKTOP"));
    if (paste == 1001) openService(cx, "New iTerm2 Window Here", xdg::userDirectory("DESKTOP"));
}

} // namespace px::commands
