// The PDF tools from the command line, for timing side by side with qpdf and pdftoppm:
//   pdf_tool sample OUT.pdf PAGES      writes a generated text-and-vector document
//   pdf_tool merge FILE...             merges like "Merge to PDF" (result beside the first file)
//   pdf_tool extract FILE.pdf KEY      renders every page like the PDF conversion target
// merge and extract print "seconds <elapsed>" for the work itself, without the program's start.
// Like pxmenu, the tool loads the image library (libvips, poppler) only when the work needs it:
// for extraction, inside the timed part.
#include "../tests/pdf/SamplePdf.h"
#include "media/Imaging.h"

#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

namespace {

int usage(const char* program) {
    std::fprintf(stderr, "usage: %s sample OUT.pdf PAGES | merge FILE... | extract FILE.pdf KEY\n",
                 program);
    return 2;
}

int sample(const std::string& path, int pages) {
    px::test::SamplePdfOptions options;
    options.extraLines = 60;
    options.shapes = 40;
    std::vector<std::string> titles;
    for (int i = 1; i <= pages; ++i)
        titles.push_back(path + ", page " + std::to_string(i));
    px::test::writeSamplePdf(path, titles, options);
    return 0;
}

int extract(const std::string& path, const std::string& key) {
    auto imaging = px::media::imaging();
    if (imaging.isError()) {
        std::fprintf(stderr, "%s\n", imaging.error().message.c_str());
        return 1;
    }
    std::int64_t finished = -1;
    imaging.value()->extractImageFromPDF(
        path, key, [&](std::int64_t, std::int64_t index) { finished = index; });
    return finished > 0 ? 0 : 1;
}

template <typename Work> int timed(Work&& work) {
    const auto start = std::chrono::steady_clock::now();
    const int status = work();
    const std::chrono::duration<double> spent = std::chrono::steady_clock::now() - start;
    std::printf("seconds %.4f\n", spent.count());
    return status;
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> args(argv + 1, argv + argc);
    if (args.size() == 3 && args[0] == "sample") return sample(args[1], std::stoi(args[2]));
    if (args.size() >= 2 && args[0] == "merge")
        return timed([&] {
            px::media::mergeToPDF({args.begin() + 1, args.end()});
            return 0;
        });
    if (args.size() == 3 && args[0] == "extract")
        return timed([&] { return extract(args[1], args[2]); });
    return usage(argv[0]);
}
