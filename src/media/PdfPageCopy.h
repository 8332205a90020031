#pragma once

#include <qpdf/QPDF.hh>

// Copying pages between qpdf documents. Throws qpdf's exceptions.
namespace px::media {

// Appends every page of source to destination, in order, with their annotations and form
// fields. Links from one copied page to another keep pointing at the copy of their target.
// Answers the number of pages appended.
int appendAllPages(QPDF& destination, QPDF& source);

} // namespace px::media
