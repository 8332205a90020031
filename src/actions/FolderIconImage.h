#pragma once

#include "config/PXMenuItem.h"
#include "config/PXMenuManager.h"

#include <optional>
#include <string>

// The picture that a folder-icon entry gives the selected items, as an image file that stays
// where it is (the entries store no image data of their own).
namespace px::foldericon {

// The first of:
// 1. the image file at the entry's iconPath when an image can be read from it (a bare name
//    or relative path is taken inside the user's folder-icon folder, "PXFolderIcon");
// 2. the product's own folder picture named by the entry's icon (<data>/icons/<name>.svg);
//    the folder-icon resource "foldericon" is the heart folder, "love";
// 3. the icon-theme file of the image the entry shows in menus (its icon, else the "folder"
//    or file-type image of its path).
// Nothing when none exists; the items then lose their custom icon.
std::optional<std::string> imageFileFor(const PXMenuManager& store, const PXMenuItem& item);

} // namespace px::foldericon
