#include "ConfigFixture.h"
#include "config/MenuKeys.h"

using namespace px;
using px::plist::Value;

namespace {

class MenuManagerTest : public test::ConfigFixture {
  protected:
    void storeFive() {
        for (const char* key : {"a", "b", "c", "d", "e"})
            PXMenuManager::addMenuKey(menukey::kRightMenu, dict({{"key", Value(key)}}), false);
    }
};

TEST_F(MenuManagerTest, AddCreatesListAndHonoursTop) {
    PXMenuManager::addMenuKey(menukey::kNewFile, dict({{"key", Value("txt")}}), false);
    PXMenuManager::addMenuKey(menukey::kNewFile, dict({{"key", Value("md")}}), true);
    PXMenuManager::addMenuKey(menukey::kNewFile, dict({{"key", Value("sh")}}), false);
    EXPECT_EQ(storedKeys(menukey::kNewFile), (std::vector<std::string>{"md", "txt", "sh"}));
}

TEST_F(MenuManagerTest, MovesFollowTheInsertionRule) {
    storeFive();
    PXMenuManager::changePositionMenuKey(menukey::kRightMenu, 1, 4);
    EXPECT_EQ(storedKeys(menukey::kRightMenu), (std::vector<std::string>{"a", "c", "d", "b", "e"}));
    PXMenuManager::changePositionMenuKey(menukey::kRightMenu, 4, 1);
    EXPECT_EQ(storedKeys(menukey::kRightMenu), (std::vector<std::string>{"a", "e", "c", "d", "b"}));
    PXMenuManager::changePositionMenuKey(menukey::kRightMenu, 9, 0);
    EXPECT_EQ(storedKeys(menukey::kRightMenu).size(), 5u);
}

TEST_F(MenuManagerTest, RemoveByPathDeletesFilesOutsideTheMainMenu) {
    std::string icon = folder.write("icon.png", "x");
    std::string other = folder.write("main.png", "x");
    PXMenuManager::addMenuKey(menukey::kCommonPath,
                              dict({{"path", Value("/srv/data")}, {"iconPath", Value(icon)}}),
                              false);
    PXMenuManager::addMenuKey(menukey::kRightMenu,
                              dict({{"key", Value("Delete")}, {"iconPath", Value(other)}}), false);
    PXMenuManager::removeMenuKey(menukey::kCommonPath, "/srv/data");
    PXMenuManager::removeMenuKey(menukey::kRightMenu, "Delete");
    EXPECT_TRUE(stored(menukey::kCommonPath).array().empty());
    EXPECT_TRUE(stored(menukey::kRightMenu).array().empty());
    EXPECT_FALSE(test::exists(icon));
    EXPECT_TRUE(test::exists(other));
}

TEST_F(MenuManagerTest, RemoveTakesEveryEntryEqualToTheMatch) {
    Value twin = dict({{"key", Value("x")}, {"icon", Value("i")}});
    for (int i = 0; i < 2; ++i)
        PXMenuManager::addMenuKey(menukey::kRightMenu, twin, false);
    PXMenuManager::addMenuKey(menukey::kRightMenu, dict({{"key", Value("x")}}), false);
    PXMenuManager::removeMenuKey(menukey::kRightMenu, "x");
    EXPECT_EQ(storedKeys(menukey::kRightMenu), (std::vector<std::string>{"x"}));
}

TEST_F(MenuManagerTest, UpdateSetsOrRemovesOneFieldOfTheFirstMatch) {
    storeFive();
    PXMenuManager::updateMenuKey(menukey::kRightMenu, "c", "displayName", Value("Sea"));
    EXPECT_EQ(stored(menukey::kRightMenu).array()[2].get("displayName"), Value("Sea"));
    PXMenuManager::updateMenuKey(menukey::kRightMenu, "c", "displayName", Value());
    EXPECT_FALSE(stored(menukey::kRightMenu).array()[2].get("displayName"));
    PXMenuManager::updateMenuKey(menukey::kRightMenu, "c", "cutPaths", Value::makeArray());
    EXPECT_TRUE(stored(menukey::kRightMenu).array()[2].get("cutPaths").isArray());
}

TEST_F(MenuManagerTest, UpdateOfAnUnknownKeyWritesTheListBackUnchanged) {
    storeFive();
    Value before = stored(menukey::kRightMenu);
    size_t writes = suite->writeCount();
    PXMenuManager::updateMenuKey(menukey::kRightMenu, "zzz", "icon", Value("x"));
    EXPECT_EQ(stored(menukey::kRightMenu), before);
    EXPECT_EQ(suite->writeCount(), writes + 1);
    PXMenuManager::updateMenuKey(menukey::kCommonApp, "zzz", "icon", Value("x"));
    EXPECT_TRUE(stored(menukey::kCommonApp).isArray());
}

TEST_F(MenuManagerTest, ReplaceSwapsTheWholeEntry) {
    storeFive();
    PXMenuManager::replaceMenuKey(menukey::kRightMenu,
                                  dict({{"key", Value("b")}, {"icon", Value("new")}}));
    EXPECT_EQ(stored(menukey::kRightMenu).array()[1].get("icon"), Value("new"));
    EXPECT_EQ(storedKeys(menukey::kRightMenu).size(), 5u);
}

TEST_F(MenuManagerTest, FoldersAreMadeOnDemandAndAnsweredEvenWhenImpossible) {
    std::string templates = PXMenuManager::fileTemplateFolder();
    EXPECT_EQ(templates, folder / "PXFileTemplate");
    EXPECT_TRUE(test::exists(templates));
    PXMenuManager::configure(suite, folder / "missing/deeper");
    EXPECT_EQ(PXMenuManager::cacheFolder(), folder / "missing/deeper/PXCache");
    EXPECT_FALSE(test::exists(folder / "missing"));
}

TEST_F(MenuManagerTest, ExistKeyIsExactAndCaseSensitive) {
    PXMenuItem::List items{PXMenuItem::create("New File")};
    EXPECT_TRUE(PXMenuManager::existKey("New File", items));
    EXPECT_FALSE(PXMenuManager::existKey("new file", items));
}

} // namespace
