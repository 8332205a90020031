#include "media/AppIconExport.h"

#include "IconTestSupport.h"
#include "actions/FileHash.h"
#include "media/IcnsFile.h"
#include "media/ImageFile.h"

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

nlohmann::json catalogueIn(const std::string& folder) {
    return nlohmann::json::parse(test::readFile(folder + "/Contents.json"));
}

// The catalogue's image entries by file name.
std::map<std::string, nlohmann::json> imagesByName(const nlohmann::json& catalogue) {
    std::map<std::string, nlohmann::json> images;
    for (const auto& image : catalogue.at("images"))
        images[image.at("filename").get<std::string>()] = image;
    return images;
}

class AppIconExport : public ::testing::Test {
  protected:
    std::string exportSet(int type) {
        EXPECT_EQ(createIconToPath(source, base, type), IconExportStatus::Written);
        return base + suffixes.at(type) + "/AppIcon.appiconset";
    }
    // Every file of the set is there with its pixel size, and nothing else but the catalogue.
    void expectFiles(const std::string& folder, const Sizes& expected) {
        std::vector<std::string> names;
        for (const auto& [name, pixels] : expected) {
            names.push_back(name);
            EXPECT_EQ(test::identifySize(folder + "/" + name), std::make_pair(pixels, pixels))
                << name;
        }
        names.push_back("Contents.json");
        std::sort(names.begin(), names.end());
        EXPECT_EQ(entriesOf(folder), names);
    }

    TempDir dir;
    std::string base = dir / "logo";
    vips::VImage source = test::gradientImage(1024, 1024);
    std::map<int, std::string> suffixes{
        {0, "(OSX)"}, {1, "(iOS)"}, {2, "(iWatch)"}, {3, "(Android)"}};
};

TEST_F(AppIconExport, MacOSSetHasExactlyTheEightFiles) {
    std::string folder = exportSet(0);
    expectFiles(folder, kMacOS);
    auto catalogue = catalogueIn(folder);
    EXPECT_EQ(catalogue.at("info"), (nlohmann::json{{"version", 1}, {"author", "xcode"}}));
    auto images = imagesByName(catalogue);
    ASSERT_EQ(images.size(), kMacOS.size());
    EXPECT_EQ(images.at("icon_16x16@2x.png"), (nlohmann::json{{"size", "16x16"},
                                                              {"idiom", "mac"},
                                                              {"filename", "icon_16x16@2x.png"},
                                                              {"scale", "2x"}}));
    EXPECT_EQ(images.at("icon_512x512.png").at("scale"), "1x");
    for (const auto& [name, image] : images)
        EXPECT_EQ(image.at("idiom"), "mac") << name;
}

TEST_F(AppIconExport, IOSSetMarksIdiomsAndKeepsHalfPointSizes) {
    std::string folder = exportSet(1);
    expectFiles(folder, kIOS);
    auto images = imagesByName(catalogueIn(folder));
    ASSERT_EQ(images.size(), kIOS.size());
    for (const auto& [name, image] : images) {
        std::string idiom = name.starts_with("iPad")     ? "ipad"
                            : name.starts_with("store_") ? "ios-marketing"
                                                         : "iphone";
        EXPECT_EQ(image.at("idiom"), idiom) << name;
        EXPECT_FALSE(image.contains("role")) << name;
    }
    EXPECT_EQ(images.at("iPadProApp_83.5x83.5@2x.png").at("size"), "83.5x83.5");
    EXPECT_EQ(images.at("iPadProApp_83.5x83.5@2x.png").at("scale"), "2x");
    EXPECT_EQ(images.at("iPhoneApp_60x60@3x.png").at("scale"), "3x");
    EXPECT_EQ(images.at("store_1024x1024.png").at("scale"), "1x");
    EXPECT_EQ(catalogueIn(folder).at("info").at("author"), "xcode");
}

TEST_F(AppIconExport, WatchSetHasRolesAndSubtypes) {
    std::string folder = exportSet(2);
    expectFiles(folder, kWatch);
    auto images = imagesByName(catalogueIn(folder));
    const std::map<std::string, std::pair<std::string, std::string>> expected{
        {"appLauncher_40x40@2x.png", {"appLauncher", "38mm"}},
        {"companion_29x29@2x.png", {"companionSettings", ""}},
        {"companion_29x29@3x.png", {"companionSettings", ""}},
        {"longLook_44x44@2x.png", {"longLook", "42mm"}},
        {"notificationCenter_24x24@2x.png", {"notificationCenter", "38mm"}},
        {"notificationCenter_27.5x27.5@2x.png", {"notificationCenter", "42mm"}},
        {"shortLook_86x86@2x.png", {"quickLook", "38mm"}},
        {"shortLook_98x98@2x.png", {"quickLook", "42mm"}}};
    ASSERT_EQ(images.size(), expected.size());
    for (const auto& [name, roleAndSubtype] : expected) {
        const auto& image = images.at(name);
        EXPECT_EQ(image.at("idiom"), "watch") << name;
        EXPECT_EQ(image.at("role"), roleAndSubtype.first) << name;
        EXPECT_EQ(image.value("subtype", ""), roleAndSubtype.second) << name;
    }
    EXPECT_EQ(images.at("notificationCenter_27.5x27.5@2x.png").at("size"), "27.5x27.5");
    EXPECT_EQ(images.at("companion_29x29@3x.png").at("scale"), "3x");
}

TEST_F(AppIconExport, AndroidSetHasResolutionsAndNoScale) {
    std::string folder = exportSet(3);
    expectFiles(folder, kAndroid);
    auto images = imagesByName(catalogueIn(folder));
    const std::map<std::string, std::string> expected{{"AndroidIcon_36x36@2x.png", "hdpi 72pt"},
                                                      {"AndroidIcon_36x36.png", "ldpi 36pt"},
                                                      {"AndroidIcon_36x36@1.3x.png", "mdpi 48pt"},
                                                      {"AndroidIcon_36x36@2.7x.png", "xhdpi 96pt"}};
    ASSERT_EQ(images.size(), expected.size());
    for (const auto& [name, resolution] : expected) {
        const auto& image = images.at(name);
        EXPECT_EQ(image.at("idiom"), "android") << name;
        EXPECT_EQ(image.at("resolution"), resolution) << name;
        EXPECT_EQ(image.at("size"), "36x36") << name;
        EXPECT_FALSE(image.contains("scale")) << name;
    }
}

TEST_F(AppIconExport, AnyOtherTypeGivesTheAndroidSet) {
    EXPECT_EQ(createIconToPath(source, base, 7), IconExportStatus::Written);
    expectFiles(base + "(Android)/AppIcon.appiconset", kAndroid);
}

TEST_F(AppIconExport, ANonSquareSourceWritesNothing) {
    EXPECT_EQ(createIconToPath(test::gradientImage(600, 400), base, 1),
              IconExportStatus::NotSquare);
    EXPECT_EQ(createIconToPath(test::gradientImage(600, 400), base, -1),
              IconExportStatus::NotSquare);
    EXPECT_TRUE(entriesOf(dir.path()).empty());
}

TEST_F(AppIconExport, ASecondExportGoesToAFolderWithAFreeName) {
    exportSet(1);
    ASSERT_EQ(createIconToPath(source, base, 1), IconExportStatus::Written);
    EXPECT_EQ(entriesOf(dir.path()), (std::vector<std::string>{"logo(iOS)", "logo(iOS)-1"}));
    expectFiles(dir / "logo(iOS)-1/AppIcon.appiconset", kIOS);
}

TEST_F(AppIconExport, TheSetFolderMayHoldAwkwardNames) {
    base = dir / "my \"logo\" $(touch pwned)";
    std::string folder = exportSet(0);
    expectFiles(folder, kMacOS);
    EXPECT_FALSE(test::exists(dir / "pwned"));
}

std::vector<std::uint8_t> fileBytes(const std::string& path) {
    std::string text = test::readFile(path);
    return {text.begin(), text.end()};
}

TEST_F(AppIconExport, IcnsFileHoldsTheMacOSSizesAndReplacesTheLastOne) {
    std::string icnsPath = dir / "AppIcon.icns";
    dir.write(".AppIcon.iconset/stale.png", "left from an earlier run");
    ASSERT_EQ(createIconToPath(source, base, -1), IconExportStatus::Written);
    EXPECT_EQ(entriesOf(dir.path()), std::vector<std::string>{"AppIcon.icns"})
        << "the hidden iconset folder is removed";
    auto chunks = icns::decode(fileBytes(icnsPath));
    ASSERT_TRUE(chunks);
    std::vector<std::string> types;
    for (const auto& chunk : *chunks)
        types.push_back(chunk.type);
    EXPECT_EQ(types, (std::vector<std::string>{"icp4", "ic11", "ic07", "ic13", "ic08", "ic14",
                                               "ic09", "ic10"}));
    EXPECT_EQ(test::pillowIcnsSizes(icnsPath),
              (std::vector<std::string>{"1024x1024", "128x128", "16x16", "256x256", "256x256",
                                        "32x32", "512x512", "512x512"}));

    auto first = fileBytes(icnsPath);
    ASSERT_EQ(createIconToPath(test::gradientImage(300, 300).invert(), dir / "other", -1),
              IconExportStatus::Written);
    EXPECT_EQ(entriesOf(dir.path()), std::vector<std::string>{"AppIcon.icns"});
    EXPECT_NE(fileBytes(icnsPath), first);
    auto largest = icns::loadLargestImage(icnsPath);
    ASSERT_TRUE(largest);
    EXPECT_EQ(largest->width(), 1024);
}

TEST_F(AppIconExport, ASourceLoadedFromAFileExportsLikeOneInMemory) {
    std::string png = dir / "photo.png";
    test::writePng(source, png);
    auto loaded = loadImage(png);
    ASSERT_TRUE(loaded);
    ASSERT_EQ(createIconToPath(*loaded, dir / "photo", 3), IconExportStatus::Written);
    expectFiles(dir / "photo(Android)/AppIcon.appiconset", kAndroid);
}

TEST_F(AppIconExport, SmallAndLargeSourcesGiveTheSameSizes) {
    source = test::gradientImage(2048, 2048);
    exportSet(0);
    expectFiles(dir / "logo(OSX)/AppIcon.appiconset", kMacOS);
    source = test::gradientImage(64, 64).extract_band(0); // one grey band, scaled up
    exportSet(3);
    expectFiles(dir / "logo(Android)/AppIcon.appiconset", kAndroid);
}

TEST_F(AppIconExport, AnImageWithoutPixelsWritesNothing) {
    EXPECT_EQ(createIconToPath(vips::VImage(), base, 1), IconExportStatus::Written);
    EXPECT_TRUE(entriesOf(dir.path()).empty());
}

TEST(AppIconFolders, GetFolderPathMakesBothFolders) {
    TempDir dir;
    auto folders = getFolderPath(dir / "pics/logo", 2);
    ASSERT_TRUE(folders);
    EXPECT_EQ(folders->setFolder, dir / "pics/logo(iWatch)");
    EXPECT_EQ(folders->appIconSetFolder, dir / "pics/logo(iWatch)/AppIcon.appiconset");
    EXPECT_TRUE(test::exists(folders->appIconSetFolder));
    auto again = getFolderPath(dir / "pics/logo", 2);
    ASSERT_TRUE(again);
    EXPECT_EQ(again->setFolder, dir / "pics/logo(iWatch)-1");
    dir.write("file", "x");
    EXPECT_FALSE(getFolderPath(dir / "file/logo", 0)) << "a file stands where the folder goes";
}

} // namespace
} // namespace px::media
