#pragma once

#include "support_files/TestSupport.h"

#include <string>
#include <utility>
#include <vector>
#include <vips/vips8>

namespace px::test {

// A width × height RGBA image with a colour gradient, so that resampling has something to do.
vips::VImage gradientImage(int width, int height);

// Writes image as a PNG file at path (through libvips).
void writePng(const vips::VImage& image, const std::string& path);

// Pixel width and height of an image file as ImageMagick's identify reads them.
std::pair<int, int> identifySize(const std::string& path);

// The sizes that Pillow's own icns reader finds in the file, as "WxH" (the scale applied),
// sorted; the reader's error text when it cannot open the file.
std::vector<std::string> pillowIcnsSizes(const std::string& path);

} // namespace px::test
