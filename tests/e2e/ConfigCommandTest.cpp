#include "CliFixture.h"

using namespace px::test;

namespace {

class ConfigCommandTest : public CliFixture {
  protected:
    void SetUp() override { ASSERT_EQ(pxmenu({"setup"}).exitStatus, 0); }
    nlohmann::json show(std::vector<std::string> args) {
        args.insert(args.begin(), {"config", "show"});
        auto result = pxmenu(args);
        EXPECT_EQ(result.exitStatus, 0) << result.err;
        return nlohmann::json::parse(result.out);
    }
};

TEST_F(ConfigCommandTest, SetupWritesTheSuiteInTheConfigHome) {
    EXPECT_TRUE(exists(xdg.configHome() + "/pxmenu/group.plist"));
    EXPECT_EQ(show({"right"}).size(), 28u);
    EXPECT_EQ(show({"pref", "update version"}), "2.6.0");
    EXPECT_EQ(show({"pref", "common path next menu"}), 3);
}

TEST_F(ConfigCommandTest, AddSetMoveAndRemoveEditTheStoredLists) {
    ASSERT_EQ(pxmenu({"config", "add", "common-path", "~/Music"}).exitStatus, 0);
    ASSERT_EQ(pxmenu({"config", "add", "right", "Gedit", "appName=gedit", "--top"}).exitStatus, 0);
    EXPECT_EQ(show({"common-path"}).at(0).at("path"), "~/Music");
    EXPECT_EQ(show({"right"}).at(0).at("appName"), "gedit");
    ASSERT_EQ(pxmenu({"config", "set", "right", "Delete", "disabled", "false"}).exitStatus, 0);
    EXPECT_EQ(show({"right", "Delete"}).at("disabled"), false);
    ASSERT_EQ(pxmenu({"config", "move", "right", "0", "3"}).exitStatus, 0);
    EXPECT_EQ(show({"right"}).at(2).at("key"), "Gedit");
    ASSERT_EQ(pxmenu({"config", "remove", "right", "Gedit"}).exitStatus, 0);
    EXPECT_EQ(show({"right"}).size(), 28u);
    ASSERT_EQ(pxmenu({"config", "set", "pref", "pref check0", "true"}).exitStatus, 0);
    EXPECT_EQ(show({"pref", "pref check0"}), true);
    ASSERT_EQ(pxmenu({"config", "set", "right", "Delete", "displayName", "--remove"}).exitStatus,
              0);
}

TEST_F(ConfigCommandTest, BadEditsAreRefusedWithStatusTwoAndChangeNothing) {
    EXPECT_EQ(pxmenu({"config", "show", "nowhere"}).exitStatus, 2);
    EXPECT_EQ(pxmenu({"config", "remove", "right", "No Such Entry"}).exitStatus, 2);
    EXPECT_EQ(pxmenu({"config", "move", "right", "0", "99"}).exitStatus, 2);
    EXPECT_EQ(pxmenu({"config", "set", "right", "Delete", "disabled", "maybe", "--type", "bool"})
                  .exitStatus,
              2);
    EXPECT_EQ(pxmenu({"config", "add", "right", "--json", "[1,2]"}).exitStatus, 2);
    auto bad = pxmenu({"config", "set", "right", "Nope", "icon", "x"});
    EXPECT_EQ(bad.exitStatus, 2);
    EXPECT_NE(bad.err.find("Nope"), std::string::npos);
    EXPECT_EQ(show({"right"}).size(), 28u);
}

TEST_F(ConfigCommandTest, ListPrintsEveryListAndPreference) {
    auto result = pxmenu({"config", "list"});
    ASSERT_EQ(result.exitStatus, 0);
    EXPECT_NE(result.out.find("array right menu"), std::string::npos);
    EXPECT_NE(result.out.find("28 entries"), std::string::npos);
    EXPECT_NE(result.out.find("pref check0"), std::string::npos);
    auto entries = pxmenu({"config", "list", "new-file"});
    EXPECT_NE(entries.out.find("off  et"), std::string::npos);
}

TEST_F(ConfigCommandTest, ADamagedSuiteGivesAClearMessageAndTheFactoryMenusAfterSetup) {
    std::string suite = xdg.configHome() + "/pxmenu/group.plist";
    std::string text = readFile(suite);
    work.write("x", "");
    { std::ofstream(suite, std::ios::trunc) << text.substr(0, text.size() / 3); }
    auto menu = pxmenu({"menu", "--kind", "1", "--target", work.path()});
    EXPECT_EQ(menu.exitStatus, 0);
    EXPECT_NE(menu.err.find("damaged"), std::string::npos);
    ASSERT_EQ(pxmenu({"setup"}).exitStatus, 0);
    EXPECT_TRUE(exists(suite + ".broken"));
    EXPECT_EQ(show({"right"}).size(), 28u);
}

} // namespace
