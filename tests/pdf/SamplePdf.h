#pragma once

// Small PDF documents written by hand for tests and benchmarks: letter-size pages with a line of
// Helvetica text each, optionally many more lines and some filled shapes.
#include <cstddef>
#include <fstream>
#include <string>
#include <vector>

namespace px::test {

struct SamplePdfOptions {
    int extraLines = 0; // lines of filler text under the title of every page
    int shapes = 0;     // filled, stroked curves drawn behind the text
    int width = 612;    // page size in points
    int height = 792;
};

inline std::string pdfLiteral(const std::string& text) {
    std::string out = "(";
    for (char c : text) {
        if (c == '(' || c == ')' || c == '\\') out += '\\';
        out += c;
    }
    return out + ")";
}

inline std::string samplePageContent(const std::string& title, const SamplePdfOptions& options) {
    std::string content;
    for (int i = 0; i < options.shapes; ++i) {
        const int x = 40 + (i * 37) % 500, y = 60 + (i * 53) % 650;
        content += std::to_string(0.2 + (i % 7) * 0.1) + " 0.4 " +
                   std::to_string(0.9 - (i % 5) * 0.15) + " rg " + std::to_string(x) + " " +
                   std::to_string(y) + " m " + std::to_string(x + 60) + " " +
                   std::to_string(y + 90) + " " + std::to_string(x + 120) + " " +
                   std::to_string(y - 40) + " " + std::to_string(x + 30) + " " +
                   std::to_string(y + 20) + " c h B\n";
    }
    content += "0 0 0 rg BT /F1 24 Tf 72 720 Td " + pdfLiteral(title) + " Tj ET\n";
    for (int i = 0; i < options.extraLines; ++i)
        content += "BT /F1 9 Tf 72 " + std::to_string(690 - (i % 70) * 9) +
                   " Td (The quick brown fox jumps over the lazy dog, line " + std::to_string(i) +
                   ".) Tj ET\n";
    return content;
}

// A complete PDF file: catalog 1, pages 2, font 3, then a page and its content per title.
inline std::string samplePdf(const std::vector<std::string>& titles,
                             const SamplePdfOptions& options = {}) {
    const int count = static_cast<int>(titles.size());
    auto pageObject = [](int i) { return 4 + 2 * i; };
    std::vector<std::string> objects;
    objects.push_back("<< /Type /Catalog /Pages 2 0 R >>");
    std::string kids;
    for (int i = 0; i < count; ++i)
        kids += std::to_string(pageObject(i)) + " 0 R ";
    objects.push_back("<< /Type /Pages /Kids [" + kids + "] /Count " + std::to_string(count) +
                      " >>");
    objects.push_back("<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>");
    for (int i = 0; i < count; ++i) {
        objects.push_back("<< /Type /Page /Parent 2 0 R /MediaBox [0 0 " +
                          std::to_string(options.width) + " " + std::to_string(options.height) +
                          "] /Resources << /Font << /F1 3 0 R >> >> /Contents " +
                          std::to_string(pageObject(i) + 1) + " 0 R >>");
        const std::string content = samplePageContent(titles[i], options);
        objects.push_back("<< /Length " + std::to_string(content.size()) + " >>\nstream\n" +
                          content + "\nendstream");
    }
    std::string pdf = "%PDF-1.4\n%\xE2\xE3\xCF\xD3\n";
    std::vector<std::size_t> offsets;
    for (std::size_t i = 0; i < objects.size(); ++i) {
        offsets.push_back(pdf.size());
        pdf += std::to_string(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
    }
    const std::size_t xref = pdf.size();
    pdf += "xref\n0 " + std::to_string(objects.size() + 1) + "\n0000000000 65535 f \n";
    for (std::size_t offset : offsets) {
        std::string number = std::to_string(offset);
        pdf += std::string(10 - number.size(), '0') + number + " 00000 n \n";
    }
    pdf += "trailer\n<< /Size " + std::to_string(objects.size() + 1) +
           " /Root 1 0 R >>\nstartxref\n" + std::to_string(xref) + "\n%%EOF\n";
    return pdf;
}

inline std::string writeSamplePdf(const std::string& path, const std::vector<std::string>& titles,
                                  const SamplePdfOptions& options = {}) {
    std::ofstream(path, std::ios::binary) << samplePdf(titles, options);
    return path;
}

} // namespace px::test
