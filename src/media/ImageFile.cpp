#include "media/ImageFile.h"

#include "media/IcnsFile.h"
#include "support/PathName.h"
#include "support/TemporaryFiles.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <functional>
#include <mutex>
#include <random>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

// libvips reports failures by throwing vips::VError from its C++ layer. Every call into it in
// this file goes through `attempt`, so no exception leaves the media module: a failure becomes
// an empty result or false, and libvips' own error buffer is cleared for the next call.
namespace px::media {
namespace {

enum class ImageType { PNG, JPEG, BMP, TIFF, JP2, GIF };

// The target encoding for a menu key; anything not listed (including "tif") writes PNG.
ImageType imageTypeForKey(std::string_view key) {
    const std::string lower = path::lowercased(key);
    if (lower == "jpeg" || lower == "jpg") return ImageType::JPEG;
    if (lower == "bmp") return ImageType::BMP;
    if (lower == "tiff") return ImageType::TIFF;
    if (lower == "jp2") return ImageType::JP2;
    if (lower == "gif") return ImageType::GIF;
    return ImageType::PNG;
}

template <typename Work> bool attempt(Work&& work) {
    try {
        work();
        return true;
    } catch (const vips::VError&) {
        vips_error_clear();
        return false;
    }
}

vips::VOption* accessOption(ImageAccess access) {
    const auto mode =
        access == ImageAccess::Sequential ? VIPS_ACCESS_SEQUENTIAL : VIPS_ACCESS_RANDOM;
    return vips::VImage::option()->set("access", mode);
}

// libvips picks a loader by the file's contents; the formats it leaves to ImageMagick are
// retried through that loader explicitly, since Debian's build gives it the lowest priority
// and some of those files are not recognised by content at all.
std::optional<vips::VImage> loadThroughVips(const std::string& path, ImageAccess access) {
    vips::VImage image;
    if (attempt([&] { image = vips::VImage::new_from_file(path.c_str(), accessOption(access)); }))
        return image;
    if (attempt([&] { image = vips::VImage::magickload(path.c_str(), accessOption(access)); }))
        return image;
    return std::nullopt;
}

} // namespace

std::optional<vips::VImage> loadImageThroughFallback(const std::string& path) {
    ensureVipsStarted();
    vips::VImage image;
    if (attempt([&] { image = vips::VImage::magickload(path.c_str()); })) return image;
    return std::nullopt;
}

namespace {

bool isGifSaverBuiltIn() {
    static const bool builtIn = vips_type_find("VipsOperation", "gifsave") != 0;
    return builtIn;
}

// JPEG and BMP hold no transparency: transparent parts become white, as on paper.
std::vector<double> whiteOf(const vips::VImage& image) {
    return {image.format() == VIPS_FORMAT_USHORT ? 65535.0 : 255.0};
}

vips::VImage flattenedOnWhite(const vips::VImage& image) {
    if (!image.has_alpha()) return image;
    return image.flatten(vips::VImage::option()->set("background", whiteOf(image)));
}

// Encoder settings: lossy types at quality 85 (a compression factor of 0.85), PNG at zlib
// level 6, TIFF uncompressed, GIF through the built-in cgif saver when libvips has it.
void encode(const vips::VImage& image, ImageType type, const char* file) {
    using vips::VImage;
    switch (type) {
    case ImageType::PNG:
        return image.pngsave(file, VImage::option()->set("compression", 6));
    case ImageType::JPEG:
        // The saver flattens by itself; an explicit flatten in front of it fails for some
        // sources (JPEG 2000 tiles).
        return image.jpegsave(file,
                              VImage::option()->set("Q", 85)->set("background", whiteOf(image)));
    case ImageType::TIFF:
        return image.tiffsave(
            file, VImage::option()->set("compression", VIPS_FOREIGN_TIFF_COMPRESSION_NONE));
    case ImageType::JP2:
        return image.jp2ksave(file, VImage::option()->set("Q", 85)->set("lossless", false));
    case ImageType::BMP:
        return flattenedOnWhite(image).magicksave(file, VImage::option()->set("format", "bmp"));
    case ImageType::GIF:
        if (isGifSaverBuiltIn()) return image.gifsave(file);
        return image.magicksave(file, VImage::option()->set("format", "gif"));
    }
}

} // namespace

void ensureVipsStarted() {
    static std::once_flag started;
    std::call_once(started, [] {
        if (VIPS_INIT("pxmenu") != 0) vips_error_clear();
        // The decoders' complaints about a damaged file (a warning per row, often) are not for
        // the user: a file that cannot be used is reported once, by what asked for it.
        g_log_set_handler(
            "VIPS",
            static_cast<GLogLevelFlags>(G_LOG_LEVEL_WARNING | G_LOG_LEVEL_MESSAGE |
                                        G_LOG_LEVEL_INFO | G_LOG_LEVEL_DEBUG),
            [](const gchar*, GLogLevelFlags, const gchar*, gpointer) {}, nullptr);
        // Loads are cached by file name; a long-lived process converting a file that changed
        // since must read it again, so nothing is cached.
        vips_cache_set_max(0);
    });
}

std::optional<vips::VImage> loadImage(const std::string& path, ImageAccess access) {
    ensureVipsStarted();
    // The .icns container is ours to read; what it gives is already decoded into memory.
    if (path::lowercased(path::pathExtension(path)) == "icns") return icns::loadLargestImage(path);
    std::optional<vips::VImage> image = loadThroughVips(path, access);
    if (!image || access == ImageAccess::Sequential) return image;
    // Some loaders (JPEG 2000) cannot decode the file a second time, so an image to be read
    // several times is decoded once into memory.
    if (attempt([&] { *image = image->copy_memory(); })) return image;
    return std::nullopt;
}

bool saveImageWithExt(const vips::VImage& image, std::string_view key, const std::string& path) {
    ensureVipsStarted();
    if (image.get_image() == nullptr) return false;
    auto temporary = io::createTemporaryBeside(path);
    if (temporary.isError()) return false;
    const bool written =
        attempt([&] { encode(image, imageTypeForKey(key), temporary.value().c_str()); }) &&
        !io::syncFile(temporary.value()).isError();
    if (written && ::rename(temporary.value().c_str(), path.c_str()) == 0) return true;
    ::unlink(temporary.value().c_str());
    return false;
}

vips::VImage resampledImage(const vips::VImage& image, int width, int height) {
    ensureVipsStarted();
    if (width < 1 || height < 1) return vips::VImage();
    vips::VImage result;
    const bool made = attempt([&] {
        // thumbnail_image premultiplies around its resampling and, forced, gives the size asked
        // for; `gravity` only trims a rounding pixel should one ever differ.
        result = image.thumbnail_image(
            width, vips::VImage::option()->set("height", height)->set("size", VIPS_SIZE_FORCE));
        if (result.width() != width || result.height() != height)
            result = result.gravity(VIPS_COMPASS_DIRECTION_CENTRE, width, height);
    });
    return made ? result : vips::VImage();
}

} // namespace px::media
