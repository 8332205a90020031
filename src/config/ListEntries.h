#pragma once

#include "config/PXMenuItem.h"
#include "plist/Value.h"

#include <string>
#include <string_view>

// What an editor of the stored lists needs to know about one stored entry, and the entries it
// adds by hand. Every change goes through PXMenuManager's locked whole-list edits.
namespace px {
class PXMenuManager;
}

namespace px::entries {

// The entry's "key", or its "path" for a common-path entry: what the store's edits match.
std::string keyOf(const plist::Value& entry);

// The record whose menuTitle() and menuIcon() show the entry as its list's menu shows it.
PXMenuItem displayItem(std::string_view menuKey, const plist::Value& entry);

// False for the permanent entries of the main menu and the window-based new-file entry, which
// the menus cannot do without; a person switches those off instead.
bool canRemove(std::string_view menuKey, const plist::Value& entry);

// Appends an application (its desktop-entry name, shown with `icon`) to "array common app";
// false, changing nothing, when the list already has an entry of that name.
bool addApplication(const PXMenuManager& store, const std::string& name, const std::string& icon);

// Appends a folder to "array common path"; false, changing nothing, when the list already
// has it (compared in standardised form).
bool addFolder(const PXMenuManager& store, const std::string& path);

} // namespace px::entries
