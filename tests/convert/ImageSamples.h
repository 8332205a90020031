#pragma once

#include <string>
#include <vips/vips8>

// Sample images made with libvips for the conversion tests, and the external tools' view of the
// files the conversion writes.
namespace px::test {

inline constexpr int kSampleWidth = 64;
inline constexpr int kSampleHeight = 48;

// 64 x 48 RGBA: the left half red, the right half blue, and the top-left 8 x 8 corner fully
// transparent (red underneath).
vips::VImage sampleImage();

// Writes the sample in the format its file name's extension names (PNG, JPEG, TIFF, GIF, WebP,
// JPEG 2000 through libvips; BMP, ICO, WBMP, PDF through its ImageMagick saver; SVG as text).
// False when this machine cannot make that format.
bool writeSample(const std::string& path);

struct Rgb {
    int red = 0, green = 0, blue = 0;
};

// The colour of one pixel of the image file at path, read back with libvips; alpha dropped.
Rgb pixelAt(const std::string& path, int x, int y);
// The alpha of one pixel, 255 when the file holds no alpha.
int alphaAt(const std::string& path, int x, int y);

// ImageMagick's name of the file's format and its size ("PNG 64x48").
std::string identify(const std::string& path);

} // namespace px::test
