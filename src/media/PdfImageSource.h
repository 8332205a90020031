#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

// An image file about to become one PDF page. Only the header is read when the source is made;
// the samples are read when the PDF is written, so a long list of photos never sits in memory.
namespace px::media {

struct PdfImageSource {
    enum class Samples {
        Jpeg,   // the file's own JPEG data, embedded as stored (DCTDecode)
        Decoded // 8-bit RGB decoded by libvips (orientation applied), alpha as a soft mask
    };

    std::string path;
    Samples samples = Samples::Decoded;
    int width = 0;      // pixels, after orientation
    int height = 0;     //
    int components = 3; // 1 (grey) or 3 (RGB)
    bool hasAlpha = false;
};

// Empty when the file does not load as an image.
std::optional<PdfImageSource> pdfImageSource(const std::string& path);

using SampleSink = std::function<void(const unsigned char* bytes, std::size_t size)>;

// Writes the colour data: the JPEG file's bytes, or width x height x 3 RGB samples. Decoded
// samples that cannot be read (the file changed or broke since) are made up as white, so the
// page keeps its size; false tells that this happened. A JPEG file that can no longer be read
// throws std::runtime_error (its data cannot be made up); otherwise only the sink throws.
bool writeColourSamples(const PdfImageSource& source, const SampleSink& sink);
// Writes width x height alpha samples (opaque where they cannot be read).
bool writeAlphaSamples(const PdfImageSource& source, const SampleSink& sink);

} // namespace px::media
