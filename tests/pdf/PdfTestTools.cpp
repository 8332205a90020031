#include "PdfTestTools.h"

#include "media/ImageFile.h"
#include "support_files/TestSupport.h"

#include <gtest/gtest.h>
#include <sstream>

namespace px::test {

std::string outputOf(const std::vector<std::string>& argv) {
    ProcessResult result = runProcess(argv);
    EXPECT_EQ(result.exitStatus, 0) << argv.front() << ": " << result.err;
    return result.exitStatus == 0 ? result.out : std::string{};
}

// pdfinfo prints "Page    1 size: 40 x 30 pts" for every page in the range.
std::vector<std::string> pdfPageSizes(const std::string& pdf) {
    std::istringstream lines(outputOf({"pdfinfo", "-f", "1", "-l", "9999", pdf}));
    std::vector<std::string> sizes;
    for (std::string line; std::getline(lines, line);) {
        const std::size_t size = line.find("size:"), end = line.find(" pts");
        if (!line.starts_with("Page ") || size == std::string::npos || end == std::string::npos)
            continue;
        const std::size_t start = line.find_first_not_of(' ', size + 5);
        sizes.push_back(line.substr(start, end - start));
    }
    return sizes;
}

std::string pdfText(const std::string& pdf) {
    return outputOf({"pdftotext", pdf, "-"});
}

bool passesQpdfCheck(const std::string& pdf) {
    ProcessResult result = runProcess({"qpdf", "--check", pdf});
    EXPECT_EQ(result.exitStatus, 0) << result.out << result.err;
    return result.exitStatus == 0 &&
           result.out.find("No syntax or stream encoding errors") != std::string::npos;
}

std::string makeImage(const std::string& path, const std::vector<std::string>& arguments) {
    std::vector<std::string> argv{"convert"};
    argv.insert(argv.end(), arguments.begin(), arguments.end());
    argv.push_back(path);
    outputOf(argv);
    return path;
}

PixelDifference comparePixels(const std::string& first, const std::string& second) {
    media::ensureVipsStarted();
    vips::VImage a =
        vips::VImage::new_from_file(first.c_str()).colourspace(VIPS_INTERPRETATION_sRGB);
    vips::VImage b =
        vips::VImage::new_from_file(second.c_str()).colourspace(VIPS_INTERPRETATION_sRGB);
    if (a.width() != b.width() || a.height() != b.height()) return {};
    a = a.extract_band(0, vips::VImage::option()->set("n", 3));
    b = b.extract_band(0, vips::VImage::option()->set("n", 3));
    vips::VImage difference = (a.cast(VIPS_FORMAT_INT) - b.cast(VIPS_FORMAT_INT)).abs();
    return {true, difference.max(), difference.avg()};
}

std::vector<double> pixelAt(const std::string& image, int x, int y) {
    media::ensureVipsStarted();
    vips::VImage loaded =
        vips::VImage::new_from_file(image.c_str()).colourspace(VIPS_INTERPRETATION_sRGB);
    std::vector<double> values = loaded.getpoint(x, y);
    values.resize(3);
    return values;
}

} // namespace px::test
