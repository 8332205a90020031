#include "CliFixture.h"

using namespace px::test;

namespace {

class ConfigCommandTest : public CliFixture {
  protected:
    void SetUp() override { ASSERT_EQ(pxmenu({"setup"}).exitStatus, 0); }
    nlohmann::json show(Strings args) {
        args.insert(args.begin(), {"config", "show"});
        auto result = pxmenu(args);
        EXPECT_EQ(result.exitStatus, 0) << result.err;
        return nlohmann::json::parse(result.out);
    }
    void edit(Strings args) {
        args.insert(args.begin(), "config");
        auto result = pxmenu(args);
        ASSERT_EQ(result.exitStatus, 0) << result.err;
    }
};

TEST_F(ConfigCommandTest, SetupThenAddSetMoveAndRemoveEditTheStoredLists) {
    EXPECT_TRUE(exists(xdg.configHome() + "/pxmenu/group.plist"));
    EXPECT_EQ(show({"pref", "update version"}), "2.6.0");
    EXPECT_EQ(show({"pref", "common path next menu"}), 3);
    ASSERT_EQ(show({"right"}).size(), 28u);

    edit({"add", "common-path", "~/Music"});
    edit({"add", "right", "Gedit", "appName=gedit", "--top"});
    EXPECT_EQ(show({"common-path"}).at(0).at("path"), "~/Music");
    EXPECT_EQ(show({"right"}).at(0).at("appName"), "gedit");
    edit({"set", "right", "Delete", "disabled", "false"});
    EXPECT_EQ(show({"right", "Delete"}).at("disabled"), false);
    edit({"move", "right", "0", "3"});
    EXPECT_EQ(show({"right"}).at(2).at("key"), "Gedit");
    edit({"remove", "right", "Gedit"});
    EXPECT_EQ(show({"right"}).size(), 28u);
    edit({"set", "pref", "pref check0", "true"});
    EXPECT_EQ(show({"pref", "pref check0"}), true);

    auto listed = pxmenu({"config", "list"});
    EXPECT_NE(listed.out.find("array right menu"), std::string::npos);
    EXPECT_NE(listed.out.find("28 entries"), std::string::npos);
}

TEST_F(ConfigCommandTest, BadEditsAreRefusedWithStatusTwoAndChangeNothing) {
    const std::vector<Strings> bad{
        {"show", "nowhere"},
        {"remove", "right", "No Such Entry"},
        {"move", "right", "0", "99"},
        {"set", "right", "Delete", "disabled", "maybe", "--type", "bool"},
        {"add", "right", "--json", "[1,2]"},
        {"set", "right", "Nope", "icon", "x"},
    };
    for (Strings args : bad) {
        SCOPED_TRACE(args.at(1));
        args.insert(args.begin(), "config");
        auto result = pxmenu(args);
        EXPECT_EQ(result.exitStatus, 2);
        EXPECT_FALSE(result.err.empty());
    }
    EXPECT_EQ(show({"right"}).size(), 28u);
}

} // namespace
