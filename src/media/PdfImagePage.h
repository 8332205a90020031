#pragma once

#include "media/Imaging.h"

#include <qpdf/QPDF.hh>

// Pages made from images, in qpdf documents. Throws qpdf's exceptions.
namespace px::media {

// Appends a page of the image's size in points (one pixel per point) filled by the image. Its
// samples are read through imaging when the document is written.
void appendImagePage(QPDF& destination, const PdfImageSource& image, Imaging& imaging);

} // namespace px::media
