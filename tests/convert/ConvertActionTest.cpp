// "Convert to" as the user meets it: the submenu built for the selection, the chosen target run
// through dispatch, the files written beside the sources, the progress window and the alerts.
#include "convert/ImageSamples.h"
#include "extension/ExtensionFixture.h"
#include "media/ImageFile.h"
#include "pdf/SamplePdf.h"
#include "support_files/FakeUiLog.h"

#include <filesystem>
#include <gmock/gmock.h>

using namespace px;
using namespace px::test;
using Kind = px::platform::FakeUi::ProgressEvent::Kind;
using ::testing::ElementsAre;

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
    void expectWindowClosedOnce() {
        EXPECT_EQ(sync.cx().loadingCount, 0);
        const std::vector<Kind> shown = progressKinds(*ui);
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
    PXMenuItem::Ptr convertParent() {
        for (const auto& item : store->menuItemArray())
            if (item->isConvert()) return item;
        return nullptr;
    }

    Session sync{*this};
};

// Images are converted beside themselves, replacing what was there without asking; names are
// ordinary text; broken images, other files and upper-case extensions are passed over silently.
TEST_F(ConvertActionTest, EverySelectedImageIsConvertedAndOthersAreSkippedSilently) {
    const std::string png = sample("one.png"), webp = sample("three.webp");
    const std::string quoted = sample("it's \"$(touch pwned)\".gif");
    const std::string text = work.write("notes.txt", "not an image");
    const std::string upper = sample("photo.PNG");
    const std::string bogus = work.write("broken.png", "\x89PNG\r\n\x1a\n but nothing after");
    work.write("one.bmp", "an older file of the same name");
    convert({png, quoted, text, upper, bogus, webp}, "BMP");
    EXPECT_EQ(identify(work / "one.bmp"), "BMP 64x48");
    EXPECT_EQ(identify(work / "it's \"$(touch pwned)\".bmp"), "BMP 64x48");
    EXPECT_EQ(identify(work / "three.bmp"), "BMP 64x48");
    EXPECT_FALSE(exists(work / "notes.bmp"));
    EXPECT_FALSE(exists(work / "photo.bmp")) << "upper-case extensions are not in the list";
    EXPECT_FALSE(exists(work / "broken.bmp"));
    EXPECT_FALSE(exists(work / "pwned"));
    EXPECT_TRUE(alertTexts(*ui).empty());
    expectWindowClosedOnce();
}

TEST_F(ConvertActionTest, AFailedWriteIsReportedAndTheNextItemStillConverted) {
    const std::string first = sample("first.png"), second = sample("second.png");
    work.mkdir("first.gif"); // a folder where the result would go
    convert({first, second}, "GIF");
    EXPECT_THAT(alertTexts(*ui), ElementsAre(localized("Convert Fail")));
    EXPECT_TRUE(std::filesystem::is_directory(work / "first.gif"));
    EXPECT_EQ(identify(work / "second.gif"), "GIF 64x48");
    expectWindowClosedOnce();
}

TEST_F(ConvertActionTest, OverlappingConversionsShareOneWindowThatTheLastOneCloses) {
    const std::string a = sample("a.png"), b = sample("b.png");
    select({a, b}, work.path());
    auto parent = convertParent();
    ASSERT_TRUE(parent);
    commands::convert(sync.cx(), *PXMenuItem::create("JPEG"), 6, *parent);
    commands::convert(sync.cx(), *PXMenuItem::create("TIFF"), 8, *parent);
    EXPECT_EQ(sync.cx().loadingCount, 2);
    queue::runUntilIdle();
    EXPECT_EQ(identify(work / "a.jpeg"), "JPEG 64x48");
    EXPECT_EQ(identify(work / "b.tiff"), "TIFF 64x48");
    expectWindowClosedOnce();
}

TEST_F(ConvertActionTest, IconExportTakesItsTypeFromTheTargetAndRefusesANonSquareImage) {
    convert({sample("wide.png")}, "iOS AppIconset"); // 64 x 48
    EXPECT_THAT(alertTexts(*ui),
                ElementsAre(localizedFormat("Convert Icns image invalid", 64, 48)));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(work.path()), {}), 1);
    expectWindowClosedOnce();

    const std::string square = work / "logo.png";
    ASSERT_TRUE(media::saveImageWithExt(sampleImage().crop(0, 0, 48, 48), "PNG", square));
    convert({square}, "iOS AppIconset");
    EXPECT_EQ(identify(work / "logo(iOS)/AppIcon.appiconset/store_1024x1024.png"), "PNG 1024x1024");
    EXPECT_EQ(alertTexts(*ui).size(), 1u);
}

TEST_F(ConvertActionTest, APdfSourceHasItsPagesExtractedWithProgressAndABrokenOneIsReported) {
    writeSamplePdf(work / "doc.pdf", {"One", "Two"});
    work.write("broken.pdf", "%PDF-1.4\nthis is where the document ended\n");
    convert({work / "broken.pdf", work / "doc.pdf"}, "JPEG");
    EXPECT_THAT(identify(work / "doc/1.jpeg"), testing::StartsWith("JPEG "));
    EXPECT_THAT(identify(work / "doc/2.jpeg"), testing::StartsWith("JPEG "));
    EXPECT_FALSE(exists(work / "broken"));
    EXPECT_THAT(progressFractions(*ui), ElementsAre(0.5, 1.0));
    EXPECT_THAT(alertTexts(*ui), ElementsAre(localized("Convert Fail")));
    expectWindowClosedOnce();
}

} // namespace
