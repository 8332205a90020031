#pragma once

#include <string>

// A file's icon as the desktop shows it, saved as a picture.
namespace px::fileicon {

// Saves the item's icon as a square PNG of `size` pixels at `pngPath`. The icon is, in this
// order: the custom icon the desktop's metadata gives the item; the picture itself for an
// image file of sensible dimensions; the icon theme's icon for the item's content type
// ("folder" for a folder), with the generic file icon as the last resort. False, writing
// nothing, when none of them can be drawn (no icon theme installed, for example).
bool saveIconPNG(const std::string& itemPath, const std::string& pngPath, int size);

} // namespace px::fileicon
