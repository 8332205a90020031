#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <vips/vips8>

// Image files through libvips: loading any accepted source format and saving by a target key.
namespace px::media {

// Starts libvips once per process (safe to call from any thread, any number of times).
void ensureVipsStarted();

// Loads the image at path. Formats libvips cannot open itself (BMP, ICO, PICT, WBMP, fax) are
// retried through its ImageMagick loader; .icns files go through the project's own reader.
// Empty when the file cannot be read as an image.
std::optional<vips::VImage> loadImage(const std::string& path);

// Encodes image for the target key (case-insensitive: "jpeg"/"jpg" JPEG, "bmp" BMP, "tiff" TIFF,
// "jp2" JPEG 2000, "gif" GIF, anything else PNG) and writes it to path through a temporary file
// and a rename, so an existing file is replaced whole or not at all. False when it fails.
bool saveImageWithExt(const vips::VImage& image, std::string_view key, const std::string& path);

// The same image resampled to exactly width x height pixels (alpha premultiplied around the
// resampling).
vips::VImage resampledImage(const vips::VImage& image, int width, int height);

} // namespace px::media
