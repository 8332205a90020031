#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

// Merging images and PDF documents into one PDF, and rendering a PDF's pages to image files.
namespace px::media {

// Merges the files in order (PDF pages copied as they are, each image one page of its size)
// and writes the result beside the first contributor under a unique name. Unreadable files are
// skipped; with no contributor nothing is written.
void mergeToPDF(const std::vector<std::string>& paths);

using PdfProgress = std::function<void(std::int64_t count, std::int64_t index)>;

// Renders every page of pdfPath into "<n>.<key lower-cased>" files in the folder named after
// the document, reporting (count, page number) after each page; (0, 0) and false when the
// document cannot be opened, has no pages or more than kMaxExtractedPages. The pages are
// rendered into a temporary folder beside the document and moved into place at the end, so a
// job stopped midway leaves nothing under the document's name. progress may be empty.
inline constexpr int kMaxExtractedPages = 10000;
bool extractImageFromPDF(const std::string& pdfPath, const std::string& key,
                         const PdfProgress& progress);

} // namespace px::media
