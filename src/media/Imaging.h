#pragma once

#include "media/PdfImageSource.h"
#include "media/PdfTools.h"
#include "support/ErrorOr.h"

#include <optional>
#include <string>

// The image work (libvips) and the rendering of PDF pages (poppler) live in a library of their
// own, loaded the first time they are needed: those two bring about a hundred shared libraries,
// whose loading would otherwise slow the start of every command, even one that never touches an
// image. Programs reach that work only through this interface.
namespace px::media {

// What became of one file given to "Convert to".
struct ConvertOutcome {
    enum class Result {
        Unreadable, // not an image (nor a readable PDF): skipped without a word
        Done,       // written (for a PDF: its pages extracted)
        Failed,     // the converted file could not be written
        NotSquare   // an app-icon source whose width differs from its height; nothing written
    };
    Result result = Result::Unreadable;
    int width = 0; // the source's size, for the NotSquare alert
    int height = 0;
};

class Imaging {
  public:
    virtual ~Imaging() = default;

    // Converts the file at path for the target key: an app-icon key ("...AppIcon...") exports
    // the icon set of iconType beside it, a PDF source has its pages extracted (reporting
    // progress), any other image is written beside it with the key's extension.
    virtual ConvertOutcome convertImage(const std::string& path, const std::string& key,
                                        int iconType, const PdfProgress& progress) = 0;

    // The image-to-PDF-page pieces of PdfImageSource.h.
    virtual std::optional<PdfImageSource> pdfImageSource(const std::string& path) = 0;
    virtual bool writeColourSamples(const PdfImageSource& source, const SampleSink& sink) = 0;
    virtual bool writeAlphaSamples(const PdfImageSource& source, const SampleSink& sink) = 0;

    // extractImageFromPDF of PdfTools.h.
    virtual bool extractImageFromPDF(const std::string& pdfPath, const std::string& key,
                                     const PdfProgress& progress) = 0;
};

// The loaded library's implementation; it is loaded on the first call (from any thread) and
// stays loaded. An error when the library cannot be found or loaded.
ErrorOr<Imaging*> imaging();

// Where the loaded library is (or would be loaded from); its helper programs lie beside it.
std::optional<std::string> imagingLibraryPath();

// The name of the function the library exports to hand out its implementation.
inline constexpr const char* kImagingEntryPoint = "pxmenu_imaging_instance";

} // namespace px::media
