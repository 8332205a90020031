#include "PdfTestTools.h"
#include "SamplePdf.h"
#include "media/ImageFile.h"
#include "media/PdfPageRender.h"
#include "media/PdfTools.h"
#include "support_files/TestSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <utility>

namespace px::media {
namespace {

using test::listing;
using test::readFile;
using test::TempDir;
using ::testing::ElementsAre;
using Report = std::pair<std::int64_t, std::int64_t>;

class ExtractTest : public ::testing::Test {
  protected:
    std::string samplePdf(const std::string& name, int pages) {
        test::SamplePdfOptions options;
        options.extraLines = 20;
        options.shapes = 6;
        std::vector<std::string> titles;
        for (int i = 1; i <= pages; ++i)
            titles.push_back("Page " + std::to_string(i));
        return test::writeSamplePdf(dir / name, titles, options);
    }
    std::vector<Report> extract(const std::string& pdf, const std::string& key) {
        std::vector<Report> reports;
        extractImageFromPDF(pdf, key, [&](std::int64_t count, std::int64_t index) {
            reports.emplace_back(count, index);
        });
        return reports;
    }

    TempDir dir;
};

TEST_F(ExtractTest, EveryPageMatchesPdftoppmAt150DpiAndIsCountedInOrder) {
    const std::string pdf = samplePdf("doc.pdf", 3);
    EXPECT_THAT(extract(pdf, "PNG"), ElementsAre(Report{3, 1}, Report{3, 2}, Report{3, 3}));
    EXPECT_THAT(listing(dir / "doc"), ElementsAre("1.png", "2.png", "3.png"));
    test::outputOf({"pdftoppm", "-r", "150", "-png", pdf, dir / "reference"});
    for (int page = 1; page <= 3; ++page) {
        const auto difference =
            test::comparePixels(dir / ("doc/" + std::to_string(page) + ".png"),
                                dir / ("reference-" + std::to_string(page) + ".png"));
        ASSERT_TRUE(difference.sameSize) << "page " << page;
        EXPECT_LT(difference.mean, 0.05) << "page " << page;
        EXPECT_LE(difference.largest, 8) << "page " << page;
    }
}

TEST_F(ExtractTest, UnreadableOrEmptyDocumentsReportZeroAndWriteNothing) {
    dir.write("broken.pdf", "%PDF-1.4 nothing here");
    test::writeSamplePdf(dir / "empty.pdf", {});
    const std::string plain = samplePdf("plain.pdf", 1);
    test::outputOf({"qpdf", "--encrypt", "user", "owner", "256", "--", plain, dir / "locked.pdf"});
    ::unlink(plain.c_str());
    for (const char* name : {"missing.pdf", "broken.pdf", "empty.pdf", "locked.pdf"})
        EXPECT_THAT(extract(dir / name, "png"), ElementsAre(Report{0, 0})) << name;
    EXPECT_THAT(listing(dir.path()), ElementsAre("broken.pdf", "empty.pdf", "locked.pdf"));
    extractImageFromPDF(dir / "missing.pdf", "png", {}); // no progress block: no report, no fault
}

TEST_F(ExtractTest, ExistingFolderReceivesThePagesAndAnEmptyUniqueFolderIsMade) {
    const std::string pdf = samplePdf("doc.pdf", 2);
    dir.write("doc/1.png", "stale");
    dir.write("doc/keep.txt", "mine");
    extract(pdf, "PNG");
    EXPECT_THAT(listing(dir.path()), ElementsAre("doc", "doc-1", "doc.pdf"));
    EXPECT_THAT(listing(dir / "doc-1"), ElementsAre());
    EXPECT_THAT(listing(dir / "doc"), ElementsAre("1.png", "2.png", "keep.txt"));
    EXPECT_NE(readFile(dir / "doc/1.png"), "stale");
    EXPECT_EQ(readFile(dir / "doc/keep.txt"), "mine");
}

TEST_F(ExtractTest, HugePagesAreRenderedWithinThePixelBudget) {
    test::SamplePdfOptions poster;
    poster.width = 5000;
    poster.height = 4000;
    test::writeSamplePdf(dir / "poster.pdf", {"Poster"}, poster);
    EXPECT_THAT(extract(dir / "poster.pdf", "jpeg"), ElementsAre(Report{1, 1}));
    ensureVipsStarted();
    vips::VImage page = vips::VImage::new_from_file((dir / "poster/1.jpeg").c_str());
    EXPECT_LE(double(page.width()) * page.height(), PdfPageRender::kMaxPagePixels);
    EXPECT_NEAR(double(page.width()) / page.height(), 1.25, 0.01);
}

} // namespace
} // namespace px::media
