#include "convert/ImageSamples.h"

#include "media/ImageFile.h"
#include "support_files/TestSupport.h"

#include <cstdio>
#include <fstream>
#include <vector>

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

void writeBlankPdf(const std::string& path, int pages) {
    std::vector<std::string> objects{"<< /Type /Catalog /Pages 2 0 R >>"};
    std::string kids;
    for (int page = 0; page < pages; ++page)
        kids += std::to_string(3 + page) + " 0 R ";
    objects.push_back("<< /Type /Pages /Kids [" + kids + "] /Count " + std::to_string(pages) +
                      " >>");
    for (int page = 0; page < pages; ++page)
        objects.push_back("<< /Type /Page /Parent 2 0 R /MediaBox [0 0 72 48] >>");
    std::string pdf = "%PDF-1.4\n";
    std::vector<std::size_t> offsets;
    for (std::size_t i = 0; i < objects.size(); ++i) {
        offsets.push_back(pdf.size());
        pdf += std::to_string(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
    }
    const std::size_t xref = pdf.size();
    pdf += "xref\n0 " + std::to_string(objects.size() + 1) + "\n0000000000 65535 f \n";
    for (std::size_t offset : offsets) {
        char line[24];
        std::snprintf(line, sizeof line, "%010zu 00000 n \n", offset);
        pdf += line;
    }
    pdf += "trailer\n<< /Size " + std::to_string(objects.size() + 1) +
           " /Root 1 0 R >>\nstartxref\n" + std::to_string(xref) + "\n%%EOF\n";
    std::ofstream(path, std::ios::binary) << pdf;
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

std::string describe(const std::string& path) {
    return runProcess({"file", "-b", path}).out;
}

} // namespace px::test
