#include "CliFixture.h"

#include <algorithm>

using namespace px::test;

namespace {

class MenuCommandTest : public CliFixture {
  protected:
    void SetUp() override { ASSERT_EQ(pxmenu({"setup"}).exitStatus, 0); }
    static bool has(const std::vector<std::string>& list, const std::string& key) {
        return std::find(list.begin(), list.end(), key) != list.end();
    }
};

TEST_F(MenuCommandTest, OneFileGetsTheFileEntriesWithTagsAndSubmenus) {
    std::string file = work.write("notes.txt", "hello");
    auto menu = menuJson({"--target", work.path(), "--", file});
    auto top = keys(menu);
    EXPECT_TRUE(has(top, "New File"));
    EXPECT_TRUE(has(top, "Copy to"));
    EXPECT_TRUE(has(top, "Copy Path"));
    EXPECT_FALSE(has(top, "Hide All Files"));
    EXPECT_FALSE(has(top, "Convert to"));
    EXPECT_FALSE(has(top, "Color Picker"));
    const auto* newFile = entry(menu, "New File");
    ASSERT_TRUE(newFile);
    EXPECT_EQ(newFile->at("tag"), 1);
    const auto& children = newFile->at("children");
    EXPECT_EQ(children.front().at("key"), "New File From Window");
    EXPECT_EQ(children.front().at("tag"), 101);
    EXPECT_EQ(children[children.size() - 2].at("key"), "Add to File Template");
    EXPECT_EQ(children.back().at("key"), "Go Set");
    for (const auto& item : menu) {
        EXPECT_TRUE(item.contains("title") && item.contains("icon") && item.contains("separator"));
        EXPECT_FALSE(item.at("title").get<std::string>().empty());
    }
}

TEST_F(MenuCommandTest, TwoImagesOfferMergeToPdf) {
    std::string a = work.write("a.png", "x"), b = work.write("b.png", "y");
    auto menu = menuJson({"--target", work.path(), "--", a, b});
    const auto* convert = entry(menu, "Convert to");
    ASSERT_TRUE(convert);
    std::vector<std::string> targets = keys(convert->at("children"));
    EXPECT_FALSE(has(targets, "PNG"));
    EXPECT_TRUE(has(targets, "PDF"));
    EXPECT_FALSE(entry(menu, "New File")->at("children").back().at("key") ==
                 "Add to File Template");
}

TEST_F(MenuCommandTest, AFolderBackgroundIsTheFolderItself) {
    auto menu = menuJson({"--kind", "1", "--target", work.path()});
    auto top = keys(menu);
    EXPECT_TRUE(has(top, "Hide All Files"));
    EXPECT_TRUE(has(top, "Color Picker"));
    EXPECT_FALSE(has(top, "Copy to"));
    EXPECT_FALSE(has(top, "Hide Selected Files"));
    EXPECT_TRUE(has(top, "Terminal Window"));
}

TEST_F(MenuCommandTest, AFolderSelectedGetsFolderEntries) {
    std::string folder = work.mkdir("photos");
    ASSERT_EQ(pxmenu({"config", "set", "right", "Folder Icon", "disabled", "false"}).exitStatus, 0);
    auto menu = menuJson({"--target", work.path(), "--", folder});
    auto top = keys(menu);
    EXPECT_TRUE(has(top, "Hide Selected Files"));
    EXPECT_FALSE(has(top, "Convert to"));
    EXPECT_FALSE(has(top, "Add to File Template"));
    const auto* newFile = entry(menu, "New File");
    ASSERT_TRUE(newFile);
    EXPECT_NE(newFile->at("children").back().at("key"), "Add to File Template");
}

TEST_F(MenuCommandTest, RootAloneLeavesOnlyEntriesThatNeedNoSelection) {
    auto menu = menuJson({"--target", "/", "--", "/"});
    for (const auto& key : keys(menu))
        EXPECT_TRUE(key == "New File" || key == "Common Path" || key == "Common App" ||
                    key == "Terminal Window" || key == "iTerm2 Window" || key == "Color Picker")
            << key;
    EXPECT_TRUE(has(keys(menu), "New File"));
    for (const auto& child : entry(menu, "New File")->at("children"))
        EXPECT_TRUE(child.at("key") == "New File From Window" || child.at("key") == "Go Set");
}

TEST_F(MenuCommandTest, TextOutputShowsTagsTitlesAndKeys) {
    std::string file = work.write("a.txt");
    auto result = pxmenu({"menu", "--target", work.path(), "--", file});
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    EXPECT_NE(result.out.find("[Copy Path]"), std::string::npos);
    EXPECT_NE(result.out.find("101"), std::string::npos);
}

TEST_F(MenuCommandTest, BadArgumentsExitWithTwo) {
    EXPECT_EQ(pxmenu({"menu", "--kind", "7"}).exitStatus, 2);
    EXPECT_EQ(pxmenu({"menu", "--bogus"}).exitStatus, 2);
    EXPECT_EQ(pxmenu({"frobnicate"}).exitStatus, 2);
    EXPECT_EQ(pxmenu({"run"}).exitStatus, 2);
}

TEST_F(MenuCommandTest, VersionIsTheProductVersion) {
    auto result = pxmenu({"--version"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_NE(result.out.find("2.6.0"), std::string::npos);
}

} // namespace
