#pragma once

#include <string>

// Drawing small PNG pictures with gdk-pixbuf.
namespace px::pixbuf {

// Draws the image file (any format gdk-pixbuf reads: PNG, JPEG, SVG, ...) scaled to fit a
// square of `size` pixels, keeping its proportions and centred on a transparent background,
// and writes it as a PNG. False, writing nothing, when the image cannot be read or the PNG
// cannot be written.
bool renderSquarePNG(const std::string& imagePath, const std::string& pngPath, int size);

} // namespace px::pixbuf
