#pragma once

#include "plist/Value.h"
#include "support/ErrorOr.h"

#include <string>

// A person's own picture as a new entry of the folder-icon list.
namespace px {
class PXMenuManager;
}

namespace px::foldericon {

// The size, in pixels, of the square picture kept for an added folder icon.
inline constexpr int kAddedIconSize = 256;

// Draws the image file (any format the desktop's image loader reads) into a square PNG in the
// folder-icon folder ("PXFolderIcon/<UUID>.png"), keeping its proportions, and appends the entry
// ("key" the UUID, "iconPath", "displayName" the image's name) to the store's "array folder icon".
// Returns the entry; an unreadable image adds nothing and leaves no file.
ErrorOr<plist::Value> addFolderIcon(const PXMenuManager& store, const std::string& imagePath);

} // namespace px::foldericon
