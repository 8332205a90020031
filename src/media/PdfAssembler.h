#pragma once

#include "media/PdfImageSource.h"
#include "support/ErrorOr.h"

#include <memory>
#include <string>

// A PDF document built from the pages of other PDF files and from images, then written once.
// PDF pages are copied as they are (text, fonts, annotations, form fields and links between the
// copied pages kept); an image becomes a page of its size in points, one pixel per point.
// Source files are read again when the document is written, so they must stay in place until
// then. Failures come back as values; nothing here throws.
namespace px::media {

class PdfAssembler {
  public:
    PdfAssembler();
    ~PdfAssembler();
    PdfAssembler(const PdfAssembler&) = delete;
    PdfAssembler& operator=(const PdfAssembler&) = delete;

    // Reopens each source PDF for every read instead of holding it open, for lists longer than
    // the process may hold open files (slower).
    void setKeepFilesClosed(bool closed);

    // Appends every page of the PDF file, in order; nothing when it cannot be read.
    ErrorOr<void> appendDocument(const std::string& path);
    // Appends one page showing the image.
    ErrorOr<void> appendImage(const PdfImageSource& image);
    int pageCount() const;

    // Writes the document to path, replacing what is there.
    ErrorOr<void> write(const std::string& path);

  private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace px::media
