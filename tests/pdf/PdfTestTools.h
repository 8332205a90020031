#pragma once

#include <string>
#include <vector>

// Looking at PDF files and images from tests through the installed command-line tools
// (poppler-utils, qpdf, ImageMagick) and libvips.
namespace px::test {

// Fails the current test (and answers an empty output) when the program does not exit 0.
std::string outputOf(const std::vector<std::string>& argv);

// The width and height in points of every page, as pdfinfo prints them ("40 x 30").
std::vector<std::string> pdfPageSizes(const std::string& pdf);
std::string pdfText(const std::string& pdf);
// qpdf --check found no error and no warning.
bool passesQpdfCheck(const std::string& pdf);

// Writes an image with ImageMagick: `convert <arguments...> path`.
std::string makeImage(const std::string& path, const std::vector<std::string>& arguments);

// How two images differ, per sample: the largest and the mean absolute difference.
struct PixelDifference {
    bool sameSize = false;
    double largest = 0;
    double mean = 0;
};
PixelDifference comparePixels(const std::string& first, const std::string& second);

// The RGB of one pixel, 0-255 each.
std::vector<double> pixelAt(const std::string& image, int x, int y);

} // namespace px::test
