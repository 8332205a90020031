#include "media/AppIconCatalogue.h"

#include "IconTestSupport.h"
#include "actions/FileHash.h"

#include <gtest/gtest.h>

namespace px::media {
namespace {

TEST(AppIconCatalogue, NamesWithoutExactlyOneUnderscoreAreNotImages) {
    for (const char* name : {".hidden_16x16.png", "plain.png", "two_parts_16x16.png",
                             "icon_16x16.txt", "icon_16x16", "_"})
        EXPECT_FALSE(catalogueImage(name, AppIconSet::IOS)) << name;
    EXPECT_TRUE(catalogueImage("_16x16.png", AppIconSet::IOS));
    EXPECT_TRUE(catalogueImage("Icon_16x16.PNG", AppIconSet::MacOS));
}

TEST(AppIconCatalogue, SizeAndScaleComeFromTheName) {
    auto image = catalogueImage("iPadProApp_83.5x83.5@2x.png", AppIconSet::IOS);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->dump(), R"({"size":"83.5x83.5","filename":"iPadProApp_83.5x83.5@2x.png",)"
                             R"("scale":"2x","idiom":"ipad"})");
    EXPECT_EQ(catalogueImage("store_1024x1024.png", AppIconSet::IOS)->at("idiom"), "ios-marketing");
    EXPECT_EQ(catalogueImage("IPAD_1x1.png", AppIconSet::IOS)->at("idiom"), "ipad");
    EXPECT_EQ(catalogueImage("Store_1x1.png", AppIconSet::IOS)->at("idiom"), "iphone");
}

TEST(AppIconCatalogue, OnlyTheSetsFilesAreListedInFolderOrder) {
    test::TempDir dir;
    for (const char* name : {"b_2x2.png", ".a_1x1.png", "noscore.png", "two_under_scores.png",
                             "a_1x1@3x.png", "notes_1x1.txt"})
        dir.write(name, "");
    ASSERT_TRUE(createConfigJsonToPath(dir.path(), AppIconSet::Watch));
    auto catalogue = nlohmann::json::parse(test::readFile(dir / "Contents.json"));
    std::vector<std::string> listed;
    for (const auto& image : catalogue.at("images"))
        listed.push_back(image.at("filename"));
    std::vector<std::string> expected;
    for (const std::string& name : filehash::folderEntries(dir.path()))
        if (name == "b_2x2.png" || name == "a_1x1@3x.png") expected.push_back(name);
    EXPECT_EQ(listed, expected);
    EXPECT_EQ(catalogue.at("images")[0].at("role"), listed[0].substr(0, 1));
}

TEST(AppIconCatalogue, AnUnwritableFolderIsReported) {
    test::TempDir dir;
    EXPECT_FALSE(createConfigJsonToPath(dir / "missing", AppIconSet::MacOS));
}

} // namespace
} // namespace px::media
