#pragma once

#include "media/PdfImageSource.h"
#include "support/ErrorOr.h"

#include <string>

namespace px::media {

// A PDF document built from the pages of other PDF files and from images, then written once.
// PDF pages are copied as they are (text, fonts, annotations, form fields and links between the
// copied pages kept); an image becomes a page of its size in points, one pixel per point.
// Source files are read again when the document is written, so they must stay in place until
// then. Failures come back as values; nothing here throws.
class PdfDocument {
  public:
    virtual ~PdfDocument() = default;

    // Reopens each source PDF for every read instead of holding it open, for lists longer than
    // the process may hold open files (slower).
    virtual void setKeepFilesClosed(bool closed) = 0;
    // Appends every page of the PDF file, in order; nothing when it cannot be read.
    virtual ErrorOr<void> appendDocument(const std::string& path) = 0;
    // Appends one page showing the image.
    virtual ErrorOr<void> appendImage(const PdfImageSource& image) = 0;
    virtual int pageCount() const = 0;
    // Writes the document to path, replacing what is there.
    virtual ErrorOr<void> write(const std::string& path) = 0;
};

} // namespace px::media
