#include "CliFixture.h"

using namespace px::test;

namespace {

class MenuCommandTest : public CliFixture {
  protected:
    void SetUp() override { ASSERT_EQ(pxmenu({"setup"}).exitStatus, 0); }
    static bool has(const Strings& list, const std::string& key) {
        return std::find(list.begin(), list.end(), key) != list.end();
    }
};

TEST_F(MenuCommandTest, TheEntriesFollowTheSelection) {
    const std::string file = work.write("notes.txt", "hello"), folder = work.mkdir("photos");
    const std::string a = work.write("a.png", "x"), b = work.write("b.png", "y");
    struct Case {
        const char* what;
        Strings args, offered, absent;
    };
    const std::vector<Case> cases{
        {"one file",
         request(0, work.path(), {file}),
         {"New File", "Copy to", "Copy Path"},
         {"Hide All Files", "Convert to", "Color Picker"}},
        {"the background",
         request(1, work.path()),
         {"Hide All Files", "Color Picker", "Terminal Window"},
         {"Copy to", "Hide Selected Files"}},
        {"a folder", request(0, work.path(), {folder}), {"Hide Selected Files"}, {"Convert to"}},
        {"two images", request(0, work.path(), {a, b}), {"Convert to"}, {}},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.what);
        const Strings top = keys(menuJson(test.args));
        for (const auto& key : test.offered)
            EXPECT_TRUE(has(top, key)) << key;
        for (const auto& key : test.absent)
            EXPECT_FALSE(has(top, key)) << key;
        const bool oneFile = test.args.back() == file;
        EXPECT_EQ(tagAt({"New File", "Add to File Template"}, test.args) > 0, oneFile);
    }
    const Strings targets =
        keys(entry(menuJson(request(0, work.path(), {a, b})), "Convert to")->at("children"));
    EXPECT_FALSE(has(targets, "PNG")) << "not into the sources' own format";
    EXPECT_TRUE(has(targets, "PDF"));
}

TEST_F(MenuCommandTest, TagsTitlesAndKeysInJsonAndText) {
    std::string file = work.write("notes.txt", "hello");
    auto menu = menuJson(request(0, work.path(), {file}));
    const auto* newFile = entry(menu, "New File");
    ASSERT_TRUE(newFile);
    EXPECT_EQ(newFile->at("tag"), 1);
    const auto& children = newFile->at("children");
    EXPECT_EQ(children.front().at("key"), "New File From Window");
    EXPECT_EQ(children.front().at("tag"), 101);
    auto text = pxmenu({"menu", "--target", work.path(), "--", file});
    ASSERT_EQ(text.exitStatus, 0) << text.err;
    EXPECT_NE(text.out.find("[Copy Path]"), std::string::npos);
    EXPECT_NE(text.out.find("101"), std::string::npos);
}

TEST_F(MenuCommandTest, RootAloneLeavesOnlyEntriesThatNeedNoSelection) {
    auto menu = menuJson({"--target", "/", "--", "/"});
    for (const auto& key : keys(menu))
        EXPECT_TRUE(key == "New File" || key == "Common Path" || key == "Common App" ||
                    key == "Terminal Window" || key == "iTerm2 Window" || key == "Color Picker")
            << key;
    ASSERT_TRUE(entry(menu, "New File"));
    for (const auto& child : entry(menu, "New File")->at("children"))
        EXPECT_TRUE(child.at("key") == "New File From Window" || child.at("key") == "Go Set");
}

TEST_F(MenuCommandTest, ExitStatusesAndTheVersion) {
    for (const Strings& args : {Strings{"menu", "--kind", "7"}, Strings{"menu", "--bogus"},
                                Strings{"frobnicate"}, Strings{"run"}})
        EXPECT_EQ(pxmenu(args).exitStatus, 2) << args.back();
    EXPECT_EQ(runTag(99, request(0, work.path(), {work.write("a")})).exitStatus, 4);
    auto version = pxmenu({"--version"});
    EXPECT_EQ(version.exitStatus, 0);
    EXPECT_NE(version.out.find("2.6.0"), std::string::npos);
}

} // namespace
