#pragma once

#include <memory>
#include <string>
#include <string_view>

// Rendering the pages of a PDF document to image files with poppler. One object per thread:
// a document is not shared between threads, so each thread opens its own.
namespace px::media {

class PdfPageRender {
  public:
    // Null when the file cannot be opened as a PDF or is locked by a password.
    static std::unique_ptr<PdfPageRender> open(const std::string& path);
    ~PdfPageRender();
    PdfPageRender(const PdfPageRender&) = delete;
    PdfPageRender& operator=(const PdfPageRender&) = delete;

    int pageCount() const;

    // Renders the page (0-based) at `dpi` on white paper and saves it through
    // saveImageWithExt with `key`. A page so large that it would exceed kMaxPagePixels is
    // rendered at the highest resolution within that budget instead. False when it fails.
    bool savePage(int index, double dpi, std::string_view key, const std::string& path) const;

    static constexpr double kMaxPagePixels = 64.0 * 1024 * 1024;

  private:
    struct Document;
    explicit PdfPageRender(std::unique_ptr<Document> document);
    std::unique_ptr<Document> m_document;
};

} // namespace px::media
