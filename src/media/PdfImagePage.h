#pragma once

#include "media/PdfImageSource.h"

#include <qpdf/QPDF.hh>

// Pages made from images, in qpdf documents. Throws qpdf's exceptions.
namespace px::media {

// Appends a page of the image's size in points (one pixel per point) filled by the image. Its
// samples are read when the document is written.
void appendImagePage(QPDF& destination, const PdfImageSource& image);

} // namespace px::media
