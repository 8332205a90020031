#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vips/vips8>

// Image files through libvips: loading any accepted source format and saving by a target key.
namespace px::media {

// Starts libvips once per process (safe to call from any thread, any number of times).
void ensureVipsStarted();

// How the pixels of a loaded image will be read: Sequential streams them once from top to bottom
// (fastest for a single save), Random allows any number of reads (needed to resample one source
// to several sizes).
enum class ImageAccess { Random, Sequential };

// Loads the image at path. Formats libvips cannot open itself (BMP, ICO, PICT, WBMP, fax) are
// retried through its ImageMagick loader; .icns files go through the project's own reader.
// With Sequential access only the header is read here and the pixels when the image is saved;
// with Random access the pixels are decoded into memory here. A PDF gives its first page.
// Empty when the file cannot be read as an image.
std::optional<vips::VImage> loadImage(const std::string& path,
                                      ImageAccess access = ImageAccess::Random);

// The same through the fallback loader alone (ImageMagick's), for a file whose header libvips
// reads but whose pixels its own loader refuses (TIFFs of tiled separate planes, for one).
std::optional<vips::VImage> loadImageThroughFallback(const std::string& path);

// Encodes image for the target key (case-insensitive: "jpeg"/"jpg" JPEG, "bmp" BMP, "tiff" TIFF,
// "jp2" JPEG 2000, "gif" GIF, anything else PNG) and writes it to path through a temporary file
// and a rename, so an existing file is replaced whole or not at all. False when it fails.
bool saveImageWithExt(const vips::VImage& image, std::string_view key, const std::string& path);

// The same image resampled to exactly width x height pixels (alpha premultiplied around the
// resampling). An image without pixels (no handle) when the resampling cannot be set up, for
// example for a size below 1; saving that image fails.
vips::VImage resampledImage(const vips::VImage& image, int width, int height);

} // namespace px::media
