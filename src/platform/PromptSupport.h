#pragma once

#include "config/PXMenuItem.h"
#include "platform/Ui.h"

#include <cstddef>
#include <string>
#include <vector>

// Rules every Ui implementation shares, so that the dialogs, the terminal and the scripted
// prompts answer alike.
namespace px::platform {

inline constexpr int kFirstAlertButton = 1000;

// An alert without buttons shows one ("OK").
int alertButtonCount(const Ui::Alert& alert);
// The answer of an alert that is dismissed: the button titled (localized) "Cancel", else the
// last button.
int alertCancelResult(const Ui::Alert& alert);

// One entry of the file-type chooser.
struct FileTypeEntry {
    std::size_t tag = 0; // the item's index in the item list
    std::string title;   // "<menu title> (.<extension>)"
    std::string icon;    // the item's icon, empty when the chooser shows none
};

// "<menu title> (.<ext>)", with the key when the item has no extension.
std::string fileTypeTitle(const PXMenuItem& item);
// The entries offered for `items`: special files and the "New File From Window" entry are left
// out; the others keep their index as tag, so tags can have gaps.
std::vector<FileTypeEntry> fileTypeEntries(const PXMenuItem::List& items, bool withIcons);

// A relative path typed into a panel is taken inside the panel's folder.
std::string resolvedPanelPath(const std::string& path, const std::string& directory);

} // namespace px::platform
