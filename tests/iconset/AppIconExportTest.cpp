#include "media/AppIconExport.h"

#include "IconTestSupport.h"
#include "media/IcnsFile.h"
#include "media/ImageFile.h"
#include "support/FileHash.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <nlohmann/json.hpp>

namespace px::media {
namespace {

using test::TempDir;
using Sizes = std::map<std::string, int>;

// The sets as a developer's tools expect them: file name to pixel size.
const Sizes kMacOS{{"icon_512x512@2x.png", 1024}, {"icon_512x512.png", 512},
                   {"icon_256x256@2x.png", 512},  {"icon_256x256.png", 256},
                   {"icon_128x128@2x.png", 256},  {"icon_128x128.png", 128},
                   {"icon_16x16@2x.png", 32},     {"icon_16x16.png", 16}};
const Sizes kIOS{{"iPadApp_76x76@2x.png", 152},           {"iPadApp_76x76.png", 76},
                 {"iPadNotifications_20x20@2x.png", 40},  {"iPadNotifications_20x20.png", 20},
                 {"iPadSpootlight5_29x29@2x.png", 58},    {"iPadSpootlight5_29x29.png", 29},
                 {"iPadSpootlight7_40x40@2x.png", 80},    {"iPadSpootlight7_40x40.png", 40},
                 {"iPadProApp_83.5x83.5@2x.png", 167},    {"iPhoneApp_60x60@3x.png", 180},
                 {"iPhoneApp_60x60@2x.png", 120},         {"iPhoneNotification_20x20@3x.png", 60},
                 {"iPhoneNotification_20x20@2x.png", 40}, {"iPhoneSpootlight5_29x29@3x.png", 87},
                 {"iPhoneSpootlight5_29x29@2x.png", 58},  {"iPhoneSpootlight7_40x40@3x.png", 120},
                 {"iPhoneSpootlight7_40x40@2x.png", 80},  {"store_1024x1024.png", 1024}};
const Sizes kWatch{
    {"appLauncher_40x40@2x.png", 80},        {"companion_29x29@2x.png", 58},
    {"companion_29x29@3x.png", 87},          {"longLook_44x44@2x.png", 88},
    {"notificationCenter_24x24@2x.png", 48}, {"notificationCenter_27.5x27.5@2x.png", 55},
    {"shortLook_86x86@2x.png", 172},         {"shortLook_98x98@2x.png", 196}};
const Sizes kAndroid{{"AndroidIcon_36x36@2x.png", 72},
                     {"AndroidIcon_36x36.png", 36},
                     {"AndroidIcon_36x36@1.3x.png", 24},
                     {"AndroidIcon_36x36@2.7x.png", 48}};

std::vector<std::string> entriesOf(const std::string& folder) {
    auto names = filehash::folderEntries(folder);
    std::sort(names.begin(), names.end());
    return names;
}

class AppIconExport : public ::testing::Test {
  protected:
    // Every file of the set is there with its pixel size, and nothing else but the catalogue.
    void expectFiles(const std::string& folder, const Sizes& expected) {
        std::vector<std::string> names{"Contents.json"};
        for (const auto& [name, pixels] : expected) {
            names.push_back(name);
            EXPECT_EQ(test::identifySize(folder + "/" + name), std::make_pair(pixels, pixels))
                << name;
        }
        std::sort(names.begin(), names.end());
        EXPECT_EQ(entriesOf(folder), names);
    }

    TempDir dir;
    std::string base = dir / "logo";
    vips::VImage source = test::gradientImage(1024, 1024);
};

// Each platform's set, from sources large, small and grey, with one catalogue entry checked
// whole; any type beyond the four gives the Android set.
TEST_F(AppIconExport, EverySetHasItsFilesAtTheirPixelSizesAndACatalogue) {
    struct Case {
        int type;
        const char* folder;
        const Sizes& sizes;
        vips::VImage image;
        const char* entry;
        const char* sample;
    };
    const Case cases[] = {
        {0, "logo(OSX)", kMacOS, test::gradientImage(2048, 2048), "icon_16x16@2x.png",
         R"({"filename":"icon_16x16@2x.png","idiom":"mac","scale":"2x","size":"16x16"})"},
        {1, "logo(iOS)", kIOS, source, "iPadProApp_83.5x83.5@2x.png",
         R"({"filename":"iPadProApp_83.5x83.5@2x.png","idiom":"ipad","scale":"2x",)"
         R"("size":"83.5x83.5"})"},
        {2, "logo(iWatch)", kWatch, source, "notificationCenter_27.5x27.5@2x.png",
         R"({"filename":"notificationCenter_27.5x27.5@2x.png","idiom":"watch",)"
         R"("role":"notificationCenter","scale":"2x","size":"27.5x27.5","subtype":"42mm"})"},
        {7, "logo(Android)", kAndroid, test::gradientImage(64, 64).extract_band(0),
         "AndroidIcon_36x36@1.3x.png",
         R"({"filename":"AndroidIcon_36x36@1.3x.png","idiom":"android",)"
         R"("resolution":"mdpi 48pt","size":"36x36"})"},
    };
    for (const Case& set : cases) {
        SCOPED_TRACE(set.folder);
        ASSERT_EQ(createIconToPath(set.image, base, set.type), IconExportStatus::Written);
        const std::string folder = dir / set.folder + "/AppIcon.appiconset";
        expectFiles(folder, set.sizes);
        const auto catalogue = nlohmann::json::parse(test::readFile(folder + "/Contents.json"));
        EXPECT_EQ(catalogue.at("info"), (nlohmann::json{{"version", 1}, {"author", "xcode"}}));
        ASSERT_EQ(catalogue.at("images").size(), set.sizes.size());
        for (const auto& image : catalogue.at("images")) {
            if (image.at("filename") == set.entry) {
                EXPECT_EQ(image, nlohmann::json::parse(set.sample));
            }
        }
    }
}

TEST_F(AppIconExport, ASecondExportGoesToAFolderWithAFreeNameWhateverTheName) {
    base = dir / "my \"logo\" $(touch pwned)";
    ASSERT_EQ(createIconToPath(source, base, 1), IconExportStatus::Written);
    ASSERT_EQ(createIconToPath(source, base, 1), IconExportStatus::Written);
    EXPECT_EQ(entriesOf(dir.path()),
              (std::vector<std::string>{"my \"logo\" $(touch pwned)(iOS)",
                                        "my \"logo\" $(touch pwned)(iOS)-1"}));
    expectFiles(base + "(iOS)-1/AppIcon.appiconset", kIOS);
}

TEST_F(AppIconExport, NonSquareOrEmptyImagesWriteNothing) {
    for (int type : {-1, 1})
        EXPECT_EQ(createIconToPath(test::gradientImage(600, 400), base, type),
                  IconExportStatus::NotSquare);
    EXPECT_EQ(createIconToPath(vips::VImage(), base, 1), IconExportStatus::Written);
    EXPECT_TRUE(entriesOf(dir.path()).empty());
}

// Pillow reads every size of the .icns; a later export replaces it, and it loads as an image.
TEST_F(AppIconExport, IcnsFileHoldsTheMacOSSizesAndReplacesTheLastOne) {
    std::string icnsPath = dir / "AppIcon.icns";
    dir.write(".AppIcon.iconset/stale.png", "left from an earlier run");
    ASSERT_EQ(createIconToPath(source, base, -1), IconExportStatus::Written);
    EXPECT_EQ(entriesOf(dir.path()), std::vector<std::string>{"AppIcon.icns"})
        << "the hidden iconset folder is removed";
    EXPECT_EQ(test::pillowIcnsSizes(icnsPath),
              (std::vector<std::string>{"1024x1024", "128x128", "16x16", "256x256", "256x256",
                                        "32x32", "512x512", "512x512"}));

    const std::string first = test::readFile(icnsPath);
    ASSERT_EQ(createIconToPath(test::gradientImage(300, 300).invert(), dir / "other", -1),
              IconExportStatus::Written);
    EXPECT_EQ(entriesOf(dir.path()), std::vector<std::string>{"AppIcon.icns"});
    EXPECT_NE(test::readFile(icnsPath), first);
    auto largest = loadImage(icnsPath);
    ASSERT_TRUE(largest);
    EXPECT_EQ(largest->width(), 1024);
}

} // namespace
} // namespace px::media
