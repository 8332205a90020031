// "Convert to" as the user meets it: the submenu built for the selection, the chosen target run
// through dispatch, the files written beside the sources, the progress window and the alerts.
#include "convert/ImageSamples.h"
#include "extension/ExtensionFixture.h"
#include "media/ImageFile.h"

#include <filesystem>
#include <gmock/gmock.h>

using namespace px;
using namespace px::test;
using Kind = px::platform::FakeUi::ProgressEvent::Kind;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

namespace {

class ConvertActionTest : public ExtensionFixture {
  protected:
    void SetUp() override {
        ExtensionFixture::SetUp();
        enable("Convert to");
        suite->setBool("is reviewed", true);
    }
    // Picks `target` in the "Convert to" submenu built for the selection and runs it to the end.
    void convert(std::vector<std::string> paths, const std::string& target) {
        select(std::move(paths), work.path());
        const Menu menu = sync.menuForMenuKind(MenuKind::ContextualItems);
        const MenuEntry* convertTo = find(menu, "Convert to");
        ASSERT_TRUE(convertTo) << "no Convert to entry";
        const MenuEntry* child = find(convertTo->children, target);
        ASSERT_TRUE(child) << "no " << target << " target";
        sync.onMenuItemAction(child->tag);
        queue::runUntilIdle();
    }
    std::vector<std::string> alertTexts() const {
        std::vector<std::string> texts;
        for (const auto& alert : ui->alerts())
            texts.push_back(alert.informative);
        return texts;
    }
    std::vector<Kind> kinds() const {
        std::vector<Kind> result;
        for (const auto& event : ui->progress())
            result.push_back(event.kind);
        return result;
    }
    std::vector<double> percents() const {
        std::vector<double> result;
        for (const auto& event : ui->progress())
            if (event.kind == Kind::Percent) result.push_back(event.fraction);
        return result;
    }
    void expectWindowClosedOnce() {
        EXPECT_EQ(sync.loadingCount, 0);
        const std::vector<Kind> shown = kinds();
        ASSERT_FALSE(shown.empty());
        EXPECT_EQ(shown.front(), Kind::Open);
        EXPECT_EQ(shown.back(), Kind::Close);
        EXPECT_EQ(std::count(shown.begin(), shown.end(), Kind::Close), 1);
    }
    std::string sample(const std::string& name) {
        const std::string path = work / name;
        EXPECT_TRUE(writeSample(path)) << path;
        return path;
    }
    static PXMenuItem::Ptr convertParent() {
        for (const auto& item : PXMenuManager::menuItemArray())
            if (item->isConvert()) return item;
        return nullptr;
    }

    FinderSync sync;
};

TEST_F(ConvertActionTest, JpegForAJpgWritesAJpegBesideItUnderTheProgressWindow) {
    const std::string source = sample("a.jpg");
    convert({source}, "JPEG");
    EXPECT_EQ(identify(work / "a.jpeg"), "JPEG 64x48");
    EXPECT_TRUE(alertTexts().empty());
    expectWindowClosedOnce();
}

TEST_F(ConvertActionTest, EverySelectedImageIsConvertedAndOthersAreSkippedSilently) {
    const std::string png = sample("one.png"), gif = sample("two.gif"), webp = sample("three.webp");
    const std::string text = work.write("notes.txt", "not an image");
    const std::string upper = sample("photo.PNG");
    convert({png, gif, text, upper, webp}, "BMP");
    EXPECT_EQ(identify(work / "one.bmp"), "BMP 64x48");
    EXPECT_EQ(identify(work / "two.bmp"), "BMP 64x48");
    EXPECT_EQ(identify(work / "three.bmp"), "BMP 64x48");
    EXPECT_FALSE(exists(work / "notes.bmp"));
    EXPECT_FALSE(exists(work / "photo.bmp")) << "upper-case extensions are not in the list";
    EXPECT_TRUE(alertTexts().empty());
}

TEST_F(ConvertActionTest, AnUpperCaseExtensionAloneIsLeftAlone) {
    const std::string upper = sample("photo.PNG");
    convert({upper}, "JPEG");
    EXPECT_FALSE(exists(work / "photo.jpeg"));
    EXPECT_TRUE(alertTexts().empty());
    expectWindowClosedOnce();
}

TEST_F(ConvertActionTest, AnExistingDestinationIsReplacedWithoutAsking) {
    const std::string source = sample("b.jpg");
    work.write("b.png", "an older file of the same name");
    convert({source}, "PNG");
    EXPECT_EQ(identify(work / "b.png"), "PNG 64x48");
    EXPECT_TRUE(ui->alerts().empty());
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(work.path()), {}), 2);
}

TEST_F(ConvertActionTest, BogusImagesAreSkippedWithoutAWord) {
    const std::string bogus = work.write("broken.png", "\x89PNG\r\n\x1a\n but nothing after");
    const std::string quoted = sample("it's \"$(touch pwned)\".gif");
    convert({bogus, quoted}, "TIFF");
    EXPECT_FALSE(exists(work / "broken.tiff"));
    EXPECT_EQ(identify(work / "it's \"$(touch pwned)\".tiff"), "TIFF 64x48");
    EXPECT_FALSE(exists(work / "pwned"));
    EXPECT_TRUE(alertTexts().empty());
}

TEST_F(ConvertActionTest, AFailedWriteIsReportedAndTheNextItemStillConverted) {
    const std::string first = sample("first.png"), second = sample("second.png");
    work.mkdir("first.gif"); // a folder where the result would go
    convert({first, second}, "GIF");
    EXPECT_THAT(alertTexts(), ElementsAre(localized("Convert Fail")));
    EXPECT_TRUE(std::filesystem::is_directory(work / "first.gif"));
    EXPECT_EQ(identify(work / "second.gif"), "GIF 64x48");
    expectWindowClosedOnce();
}

TEST_F(ConvertActionTest, OverlappingConversionsShareOneWindowThatTheLastOneCloses) {
    const std::string a = sample("a.png"), b = sample("b.png");
    select({a, b}, work.path());
    auto parent = convertParent();
    ASSERT_TRUE(parent);
    auto jpeg = PXMenuItem::create("JPEG"), tiff = PXMenuItem::create("TIFF");
    sync.convertItem(jpeg, parent);
    sync.convertItem(tiff, parent);
    EXPECT_EQ(sync.loadingCount, 2);
    queue::runUntilIdle();
    EXPECT_EQ(identify(work / "a.jpeg"), "JPEG 64x48");
    EXPECT_EQ(identify(work / "b.tiff"), "TIFF 64x48");
    expectWindowClosedOnce();
}

TEST_F(ConvertActionTest, IconExportRefusesANonSquareImage) {
    const std::string source = sample("wide.png"); // 64 x 48
    convert({source}, "iOS AppIconset");
    EXPECT_THAT(alertTexts(), ElementsAre(localizedFormat("Convert Icns image invalid", 64, 48)));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(work.path()), {}), 1);
    expectWindowClosedOnce();
}

TEST_F(ConvertActionTest, IconExportTakesItsTypeFromTheTargetPosition) {
    const std::string source = work / "logo.png";
    ASSERT_TRUE(media::saveImageWithExt(sampleImage().crop(0, 0, 48, 48), "PNG", source)); // square
    convert({source}, "iOS AppIconset");
    EXPECT_TRUE(exists(work / "logo(iOS)/AppIcon.appiconset/Contents.json"));
    EXPECT_EQ(identify(work / "logo(iOS)/AppIcon.appiconset/store_1024x1024.png"), "PNG 1024x1024");
    EXPECT_TRUE(alertTexts().empty());
}

TEST_F(ConvertActionTest, PdfWithOneImageStillGoesToTheMerge) {
    const std::string source = sample("page.png");
    convert({source}, "PDF");
    EXPECT_THAT(describe(work / "page.pdf"), HasSubstr("PDF document"));
    expectWindowClosedOnce();
}

TEST_F(ConvertActionTest, APdfSourceHasItsPagesExtractedWithProgress) {
    writeBlankPdf(work / "doc.pdf", 2);
    convert({work / "doc.pdf"}, "JPEG");
    EXPECT_THAT(identify(work / "doc/1.jpeg"), testing::StartsWith("JPEG "));
    EXPECT_THAT(identify(work / "doc/2.jpeg"), testing::StartsWith("JPEG "));
    EXPECT_THAT(percents(), ElementsAre(0.5, 1.0));
    EXPECT_TRUE(alertTexts().empty());
    expectWindowClosedOnce();
}

TEST_F(ConvertActionTest, ABrokenPdfIsSkippedLikeAnyImage) {
    work.write("broken.pdf", "%PDF-1.4\nthis is where the document ended\n");
    convert({work / "broken.pdf"}, "PNG");
    EXPECT_FALSE(exists(work / "broken"));
    EXPECT_TRUE(percents().empty());
    EXPECT_TRUE(alertTexts().empty());
}

} // namespace
