#pragma once

#include "media/PdfDocument.h"
#include "support/ErrorOr.h"

#include <memory>

// The PDF assembly (qpdf, which brings the TLS and number libraries with it) lives in a module
// of its own, pxmenu-pdf.so, loaded the first time a document is built, so that the commands
// that never build one start without it.
namespace px::media {

class PdfLibrary {
  public:
    virtual ~PdfLibrary() = default;
    virtual std::unique_ptr<PdfDocument> newDocument() = 0;
};

// The loaded module's implementation; loaded on the first call (from any thread). Looked for
// in PXMENU_LIBDIR first, then in the usual places, since merging needs no image library. An
// error when it cannot be found or loaded.
ErrorOr<PdfLibrary*> pdfLibrary();

inline constexpr const char* kPdfEntryPoint = "pxmenu_pdf_instance";

} // namespace px::media
