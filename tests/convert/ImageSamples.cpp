#include "convert/ImageSamples.h"

#include "media/ImageFile.h"
#include "support_files/TestSupport.h"

#include <fstream>

namespace px::test {
namespace {

std::string extensionOf(const std::string& path) {
    return path.substr(path.rfind('.') + 1);
}

bool magickSave(const vips::VImage& image, const std::string& path, const char* format) {
    try {
        image.magicksave(path.c_str(), vips::VImage::option()->set("format", format));
        return true;
    } catch (const vips::VError&) {
        vips_error_clear();
        return false;
    }
}

bool writeSvg(const std::string& path) {
    std::ofstream(path) << "<svg xmlns='http://www.w3.org/2000/svg' width='64' height='48'>"
                           "<rect x='0' y='0' width='32' height='48' fill='#ff0000'/>"
                           "<rect x='32' y='0' width='32' height='48' fill='#0000ff'/></svg>";
    return true;
}

} // namespace

vips::VImage sampleImage() {
    media::ensureVipsStarted();
    // libvips frees the buffer with g_free when the image goes.
    const std::size_t size = kSampleWidth * kSampleHeight * 4;
    auto* pixels = static_cast<unsigned char*>(g_malloc0(size));
    for (int y = 0; y < kSampleHeight; ++y)
        for (int x = 0; x < kSampleWidth; ++x) {
            unsigned char* p = &pixels[(y * kSampleWidth + x) * 4];
            const bool left = x < kSampleWidth / 2;
            p[0] = left ? 255 : 0;
            p[2] = left ? 0 : 255;
            p[3] = (x < 8 && y < 8) ? 0 : 255;
        }
    return vips::VImage::new_from_memory_steal(pixels, size, kSampleWidth, kSampleHeight, 4,
                                               VIPS_FORMAT_UCHAR)
        .copy(vips::VImage::option()->set("interpretation", VIPS_INTERPRETATION_sRGB));
}

bool writeSample(const std::string& path) {
    const std::string ext = extensionOf(path);
    const vips::VImage image = sampleImage();
    if (ext == "svg") return writeSvg(path);
    if (ext == "bmp" || ext == "ico" || ext == "wbmp" || ext == "pdf")
        return magickSave(ext == "ico" ? image : image.flatten(), path, ext.c_str());
    try {
        if (ext == "jpg" || ext == "jpeg" || ext == "jpe" || ext == "jfif")
            image.flatten().jpegsave(path.c_str());
        else
            image.write_to_file(path.c_str());
        return true;
    } catch (const vips::VError&) {
        vips_error_clear();
        return false;
    }
}

Rgb pixelAt(const std::string& path, int x, int y) {
    vips::VImage image = vips::VImage::new_from_file(path.c_str());
    if (image.bands() < 3) image = image.colourspace(VIPS_INTERPRETATION_sRGB);
    const std::vector<double> p = image.getpoint(x, y);
    return {static_cast<int>(p[0]), static_cast<int>(p[1]), static_cast<int>(p[2])};
}

int alphaAt(const std::string& path, int x, int y) {
    const vips::VImage image = vips::VImage::new_from_file(path.c_str());
    if (!image.has_alpha()) return 255;
    return static_cast<int>(image.getpoint(x, y).back());
}

std::string identify(const std::string& path) {
    return runProcess({"identify", "-format", "%m %wx%h", path + "[0]"}).out;
}

} // namespace px::test
