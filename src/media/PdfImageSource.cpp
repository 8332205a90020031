#include "media/PdfImageSource.h"

#include "media/ImageFile.h"
#include "support/FileIO.h"

#include <algorithm>
#include <cstdio>
#include <fcntl.h>
#include <stdexcept>
#include <unistd.h>
#include <vector>

namespace px::media {
namespace {

constexpr int kStripRows = 64;

int orientationOf(const vips::VImage& image) {
    if (image.get_typeof(VIPS_META_ORIENTATION) == 0) return 1;
    return image.get_int(VIPS_META_ORIENTATION);
}

bool startsLikeJpeg(const std::string& path) {
    io::FileDescriptor fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    unsigned char magic[3] = {};
    if (!fd.valid() || ::read(fd.get(), magic, sizeof magic) != sizeof magic) return false;
    return magic[0] == 0xFF && magic[1] == 0xD8 && magic[2] == 0xFF;
}

// A JPEG that a PDF reader shows exactly as stored: grey or YCbCr/RGB (not CMYK, whose stored
// inversion varies between writers), 8 bits, and no orientation to apply.
bool isPlainJpeg(const std::string& path, const vips::VImage& image) {
    if (image.get_typeof(VIPS_META_LOADER) == 0) return false;
    if (std::string(image.get_string(VIPS_META_LOADER)) != "jpegload") return false;
    const bool grey = image.bands() == 1 && image.interpretation() == VIPS_INTERPRETATION_B_W;
    const bool rgb = image.bands() == 3 && image.interpretation() == VIPS_INTERPRETATION_sRGB;
    return (grey || rgb) && image.format() == VIPS_FORMAT_UCHAR && orientationOf(image) == 1 &&
           startsLikeJpeg(path);
}

// The image upright, in 8-bit sRGB with or without alpha; throws vips::VError when it cannot
// be turned into that.
vips::VImage pdfReady(const vips::VImage& loaded) {
    vips::VImage image = orientationOf(loaded) > 1 ? loaded.autorot() : loaded;
    if (image.interpretation() != VIPS_INTERPRETATION_sRGB || image.bands() < 3)
        image = image.colourspace(VIPS_INTERPRETATION_sRGB);
    if (image.format() != VIPS_FORMAT_UCHAR) image = image.cast(VIPS_FORMAT_UCHAR);
    if (image.bands() != 3 && image.bands() != 4) throw vips::VError("unexpected band count");
    return image;
}

// Rotating needs the whole image; everything else streams from top to bottom.
std::optional<vips::VImage> loadForSamples(const std::string& path) {
    auto image = loadImage(path, ImageAccess::Sequential);
    if (image && orientationOf(*image) > 1) image = loadImage(path, ImageAccess::Random);
    return image;
}

// Sends the image's rows to the sink a strip at a time, counting them in `sent`.
void sendRows(const vips::VImage& image, const SampleSink& sink, int& sent) {
    const std::size_t rowBytes = static_cast<std::size_t>(image.width()) * image.bands();
    vips::VRegion region = vips::VRegion::new_from_image(image);
    while (sent < image.height()) {
        const int rows = std::min(kStripRows, image.height() - sent);
        region.prepare(0, sent, image.width(), rows);
        for (int y = sent; y < sent + rows; ++y)
            sink(region.addr(0, y), rowBytes);
        sent += rows;
    }
}

// Sends `bands` bands from `first` of every row to the sink; rows that cannot be computed are
// sent as `fallback` bytes instead. False when any row fell back.
bool streamBands(const PdfImageSource& source, int first, int bands, unsigned char fallback,
                 const SampleSink& sink) {
    int sent = 0;
    try {
        auto loaded = loadForSamples(source.path);
        if (!loaded) throw vips::VError("cannot load " + source.path);
        const vips::VImage image =
            pdfReady(*loaded).extract_band(first, vips::VImage::option()->set("n", bands));
        if (image.width() != source.width || image.height() != source.height)
            throw vips::VError("the image changed size");
        sendRows(image, sink, sent);
        return true;
    } catch (const vips::VError&) {
        vips_error_clear();
    }
    const std::vector<unsigned char> row(static_cast<std::size_t>(source.width) * bands, fallback);
    for (; sent < source.height; ++sent)
        sink(row.data(), row.size());
    return false;
}

void copyFile(const std::string& path, const SampleSink& sink) {
    io::FileDescriptor fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!fd.valid()) throw std::runtime_error("cannot read " + path);
    std::vector<unsigned char> buffer(1 << 16);
    for (;;) {
        const ssize_t got = ::read(fd.get(), buffer.data(), buffer.size());
        if (got < 0) throw std::runtime_error("cannot read " + path);
        if (got == 0) return;
        sink(buffer.data(), static_cast<std::size_t>(got));
    }
}

} // namespace

std::optional<PdfImageSource> pdfImageSource(const std::string& path) {
    auto loaded = loadImage(path, ImageAccess::Sequential);
    if (!loaded) return std::nullopt;
    try {
        if (isPlainJpeg(path, *loaded))
            return PdfImageSource{path,
                                  PdfImageSource::Samples::Jpeg,
                                  loaded->width(),
                                  loaded->height(),
                                  loaded->bands(),
                                  false};
        const vips::VImage ready = pdfReady(*loaded);
        return PdfImageSource{path,
                              PdfImageSource::Samples::Decoded,
                              ready.width(),
                              ready.height(),
                              3,
                              ready.bands() == 4};
    } catch (const vips::VError&) {
        vips_error_clear();
        return std::nullopt;
    }
}

bool writeColourSamples(const PdfImageSource& source, const SampleSink& sink) {
    if (source.samples == PdfImageSource::Samples::Jpeg) {
        copyFile(source.path, sink);
        return true;
    }
    return streamBands(source, 0, 3, 0xFF, sink);
}

bool writeAlphaSamples(const PdfImageSource& source, const SampleSink& sink) {
    return streamBands(source, 3, 1, 0xFF, sink);
}

} // namespace px::media
