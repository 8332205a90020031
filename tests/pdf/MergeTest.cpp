#include "PdfTestTools.h"
#include "SamplePdf.h"
#include "media/ImageFile.h"
#include "media/PdfTools.h"
#include "support/Localization.h"
#include "support_files/TestSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace px::media {
namespace {

using test::listing;
using test::makeImage;
using test::pdfPageSizes;
using test::pdfText;
using test::readFile;
using test::ScopedEnv;
using test::TempDir;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

class MergeTest : public ::testing::Test {
  protected:
    void SetUp() override { resetLocalizationForTesting(); }
    void TearDown() override { resetLocalizationForTesting(); }

    std::string image(const std::string& name, const std::string& size,
                      const std::string& colour = "red") {
        return makeImage(dir / name, {"-size", size, "xc:" + colour});
    }
    std::string textPdf(const std::string& name, const std::vector<std::string>& titles,
                        const test::SamplePdfOptions& options = {}) {
        return test::writeSamplePdf(dir / name, titles, options);
    }
    // The merged page rendered at 72 dpi, so one image pixel is one rendered pixel.
    std::string rendered(const std::string& pdf) {
        test::outputOf({"pdftoppm", "-r", "72", "-png", "-singlefile", pdf, dir / "rendered"});
        return dir / "rendered.png";
    }

    ScopedEnv language{"LANGUAGE", std::nullopt};
    ScopedEnv all{"LC_ALL", std::nullopt};
    ScopedEnv messages{"LC_MESSAGES", std::nullopt};
    ScopedEnv lang{"LANG", "C"};
    TempDir dir;
};

TEST_F(MergeTest, OneImageBecomesOnePageOfItsSizeNamedAfterIt) {
    const std::string name = "it's \"$(touch pwned)\" `id`";
    mergeToPDF({image(name + ".png", "40x30")});
    const std::string merged = dir / (name + ".pdf");
    EXPECT_THAT(listing(dir.path()), ElementsAre(name + ".pdf", name + ".png"));
    EXPECT_THAT(pdfPageSizes(merged), ElementsAre("40 x 30"));
    EXPECT_THAT(test::pixelAt(rendered(merged), 20, 15), ElementsAre(255, 0, 0));
}

// Several items, or one document of several pages, make "Untitled", under a free name.
TEST_F(MergeTest, SeveralPagesMakeAnUntitledDocumentWithAUniqueName) {
    const std::vector<std::string> images{image("a.png", "40x30"), image("b.png", "20x50", "blue")};
    mergeToPDF(images);
    EXPECT_THAT(pdfPageSizes(dir / "Untitled.pdf"), ElementsAre("40 x 30", "20 x 50"));
    const std::string first = readFile(dir / "Untitled.pdf");
    mergeToPDF({textPdf("report.pdf", {"One", "Two"})});
    EXPECT_EQ(pdfPageSizes(dir / "Untitled-1.pdf").size(), 2u);
    EXPECT_EQ(readFile(dir / "Untitled.pdf"), first) << "the earlier result stays";
}

TEST_F(MergeTest, OnePagePdfAloneGoesToAUniqueVariantNeverOverTheSource) {
    const std::string source = textPdf("x.pdf", {"Only page"});
    const std::string before = readFile(source);
    mergeToPDF({source});
    EXPECT_THAT(listing(dir.path()), ElementsAre("x-1.pdf", "x.pdf"));
    EXPECT_EQ(readFile(source), before);
    EXPECT_THAT(pdfText(dir / "x-1.pdf"), HasSubstr("Only page"));
}

// Missing, broken, locked and foreign items are passed over; the first readable item names the
// result, and with none nothing is written.
TEST_F(MergeTest, UnreadableItemsAreSkippedAndTheFirstReadableOneNamesTheResult) {
    dir.write("broken.pdf", "%PDF-1.4 this is not a PDF document");
    dir.write("broken.png", "not an image");
    dir.write("notes.txt", "plain text");
    const std::string plain = textPdf("plain.pdf", {"Secret"});
    test::outputOf({"qpdf", "--encrypt", "user", "owner", "256", "--", plain, dir / "locked.pdf"});
    ::unlink(plain.c_str());
    mergeToPDF({dir / "missing.pdf", dir / "broken.png"});
    mergeToPDF({});
    EXPECT_THAT(listing(dir.path()),
                ElementsAre("broken.pdf", "broken.png", "locked.pdf", "notes.txt"));
    mergeToPDF({dir / "missing.png", dir / "broken.pdf", dir / "locked.pdf", dir / "broken.png",
                dir / "notes.txt", image("b.png", "10x10")});
    EXPECT_EQ(pdfPageSizes(dir / "b.pdf").size(), 1u);
}

TEST_F(MergeTest, PdfPagesAreCopiedWithTheirTextNotRasterised) {
    mergeToPDF({textPdf("a.pdf", {"Alpha one", "Alpha two"}), image("picture.png", "30x30"),
                textPdf("c.pdf", {"Gamma one"})});
    const std::string merged = dir / "Untitled.pdf";
    EXPECT_TRUE(test::passesQpdfCheck(merged));
    EXPECT_THAT(pdfPageSizes(merged),
                ElementsAre("612 x 792", "612 x 792", "30 x 30", "612 x 792"));
    EXPECT_THAT(pdfText(merged), ::testing::MatchesRegex("Alpha one.*Alpha two.*Gamma one.*"));
    EXPECT_THAT(test::outputOf({"pdffonts", merged}), HasSubstr("Helvetica"));
    // The only image in the document is the picture's.
    std::string images = test::outputOf({"pdfimages", "-list", merged});
    EXPECT_EQ(std::count(images.begin(), images.end(), '\n'), 3) << images;
}

TEST_F(MergeTest, JpegDataIsEmbeddedAsStored) {
    const std::string photo = makeImage(dir / "photo.jpg", {"-size", "64x48", "gradient:red-blue"});
    mergeToPDF({photo});
    const std::string merged = dir / "photo.pdf";
    EXPECT_THAT(pdfPageSizes(merged), ElementsAre("64 x 48"));
    EXPECT_THAT(test::outputOf({"pdfimages", "-list", merged}), HasSubstr("jpeg"));
    test::outputOf({"pdfimages", "-j", merged, dir / "out"});
    EXPECT_EQ(readFile(dir / "out-000.jpg"), readFile(photo));
}

TEST_F(MergeTest, CmykJpegsAndDeepGreyImagesAreDecodedToRgb) {
    makeImage(dir / "print.jpg", {"-size", "16x16", "xc:blue", "-colorspace", "CMYK"});
    makeImage(dir / "deep.png",
              {"-size", "16x16", "xc:gray50", "-depth", "16", "-colorspace", "Gray"});
    mergeToPDF({dir / "print.jpg"});
    mergeToPDF({dir / "deep.png"});
    for (const char* name : {"print.pdf", "deep.pdf"}) {
        const std::string images = test::outputOf({"pdfimages", "-list", dir / name});
        EXPECT_THAT(images, HasSubstr("rgb")) << images;
        EXPECT_THAT(images, ::testing::Not(HasSubstr("jpeg"))) << images;
    }
    const std::vector<double> blue = test::pixelAt(rendered(dir / "print.pdf"), 8, 8);
    // Converted through a print profile, full cyan and magenta make a dark blue.
    EXPECT_GT(blue[2], blue[0] + 60);
    EXPECT_GT(blue[2], blue[1] + 60);
    const std::vector<double> grey = test::pixelAt(rendered(dir / "deep.pdf"), 8, 8);
    EXPECT_NEAR(grey[0], 128, 3);
    EXPECT_EQ(grey[0], grey[2]);
}

TEST_F(MergeTest, TransparencyBecomesASoftMask) {
    mergeToPDF({image("glass.png", "20x10", "rgba(255,0,0,0.5)")});
    const std::string merged = dir / "glass.pdf";
    EXPECT_THAT(test::outputOf({"pdfimages", "-list", merged}), HasSubstr("smask"));
    const std::vector<double> pixel = test::pixelAt(rendered(merged), 10, 5);
    EXPECT_EQ(pixel[0], 255);
    EXPECT_NEAR(pixel[1], 128, 3) << "half-transparent red on white paper";
}

TEST_F(MergeTest, TurnedPhotosAreSetUpright) {
    ensureVipsStarted();
    vips::VImage stored = vips::VImage::black(64, 48, vips::VImage::option()->set("bands", 3));
    stored = stored.copy();
    stored.set(VIPS_META_ORIENTATION, 6); // shown turned a quarter clockwise
    stored.jpegsave((dir / "turned.jpg").c_str());
    mergeToPDF({dir / "turned.jpg"});
    EXPECT_THAT(pdfPageSizes(dir / "turned.pdf"), ElementsAre("48 x 64"));
}

TEST_F(MergeTest, UntitledFollowsTheUsersLanguage) {
    ScopedEnv chinese("LANG", "zh_CN.UTF-8");
    resetLocalizationForTesting();
    mergeToPDF({image("a.png", "10x10"), image("b.png", "10x10")});
    EXPECT_EQ(pdfPageSizes(dir / (localized("Untitled") + ".pdf")).size(), 2u);
    EXPECT_NE(localized("Untitled"), "Untitled");
}

TEST_F(MergeTest, UnwritableFolderLeavesEverythingAsItWas) {
    if (::geteuid() == 0) GTEST_SKIP() << "root writes into read-only folders";
    const std::string source = image("a.png", "10x10");
    ASSERT_EQ(::chmod(dir.path().c_str(), 0555), 0);
    mergeToPDF({source});
    ::chmod(dir.path().c_str(), 0755);
    EXPECT_THAT(listing(dir.path()), ElementsAre("a.png"));
}

TEST_F(MergeTest, LongListsOfDocumentsAreMergedInOrder) {
    std::vector<std::string> sources;
    for (int i = 0; i < 230; ++i)
        sources.push_back(
            textPdf("part" + std::to_string(i) + ".pdf", {"Part " + std::to_string(i)}));
    mergeToPDF(sources);
    const std::string merged = dir / "Untitled.pdf";
    EXPECT_EQ(pdfPageSizes(merged).size(), 230u);
    const std::string text = pdfText(merged);
    EXPECT_LT(text.find("Part 0\n"), text.find("Part 229\n"));
    EXPECT_TRUE(test::passesQpdfCheck(merged));
}

} // namespace
} // namespace px::media
