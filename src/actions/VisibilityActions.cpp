// Hiding and unhiding items through their folders' ".hidden" files, and the instruction that
// switches the file manager's display of hidden files.
#include "actions/FailureLog.h"
#include "actions/FileHash.h"
#include "actions/HiddenFile.h"
#include "actions/PathName.h"
#include "config/Localization.h"
#include "extension/FinderSync.h"
#include "platform/Platform.h"
#include "support/Xdg.h"

#include <algorithm>
#include <optional>

namespace px {

namespace {

enum class Visibility { Hidden, Shown };

// The item's command names the change: "chflags hidden" or "chflags nohidden".
std::optional<Visibility> visibilityFor(const std::string& command) {
    if (command == "chflags hidden") return Visibility::Hidden;
    if (command == "chflags nohidden") return Visibility::Shown;
    return std::nullopt;
}

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

void FinderSync::hideAndShowFiles(const PXMenuItem::Ptr& item) {
    auto visibility = visibilityFor(item->command);
    if (!visibility) return;
    if (isSelectURL) return applyToItems(*visibility, platform::controller().selectedItemURLs());
    std::string folder = targetURL();
    if (!filehash::isValid(folder)) return;
    std::vector<std::string> names = visibleEntries(folder);
    if (!names.empty()) apply(*visibility, folder, names);
}

void FinderSync::showSystemFiles(const PXMenuItem::Ptr& item) {
    auto& ui = platform::ui();
    const std::string show = localized("System Hide Files Show");
    const std::string hide = localized("System Hide Files Hide");
    int choice = ui.runAlert({localized(item->key),
                              localized("System Hide Files Tip"),
                              {show, hide, localized("Cancel")}});
    if (choice != 1000 && choice != 1001) return;
    const bool showing = choice == 1000;
    const std::string argument = showing ? "true" : "false";
    filehash::copyToPasteboard(formatLocalizedText(item->command, std::span(&argument, 1)),
                               platform::pasteboard());
    int paste = ui.runAlert(
        {showing ? show : hide,
         localized("Copy Instruction Tip"),
         {localized("Paste to Terminal"), localized("Paste to iTerm2"), localized("Cancel")}});
    if (paste == 1000) openServe("New Terminal at Folder", xdg::userDirectory("DESKTOP"));
    if (paste == 1001) openServe("New iTerm2 Window Here", xdg::userDirectory("DESKTOP"));
}

} // namespace px
