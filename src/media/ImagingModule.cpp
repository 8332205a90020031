// The entry point of the separately loaded image library: hands out the implementation of
// Imaging that runs the libvips and poppler code linked into this library.
#include "media/ImageConversion.h"

#include <exception>

namespace px::media {
namespace {

class ImagingLibrary final : public Imaging {
  public:
    ConvertOutcome convertImage(const std::string& path, const std::string& key, int iconType,
                                const PdfProgress& progress) override {
        try {
            return convertImageFile(path, key, iconType, progress);
        } catch (const std::exception&) {
            return {ConvertOutcome::Result::Failed};
        }
    }

    std::optional<PdfImageSource> pdfImageSource(const std::string& path) override {
        return media::pdfImageSource(path);
    }

    // The sink's exceptions pass through to the caller, which owns them.
    bool writeColourSamples(const PdfImageSource& source, const SampleSink& sink) override {
        return media::writeColourSamples(source, sink);
    }

    bool writeAlphaSamples(const PdfImageSource& source, const SampleSink& sink) override {
        return media::writeAlphaSamples(source, sink);
    }

    bool extractImageFromPDF(const std::string& pdfPath, const std::string& key,
                             const PdfProgress& progress) override {
        return media::extractImageFromPDF(pdfPath, key, progress);
    }
};

} // namespace
} // namespace px::media

extern "C" __attribute__((visibility("default"))) px::media::Imaging* pxmenu_imaging_instance() {
    static px::media::ImagingLibrary library;
    return &library;
}
