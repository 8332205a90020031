#include "ConfigFixture.h"
#include "config/MenuKeys.h"

using namespace px;
using px::plist::Value;
using Keys = std::vector<std::string>;

namespace {

class MenuManagerTest : public test::ConfigFixture {
  protected:
    void SetUp() override {
        ConfigFixture::SetUp();
        for (const char* key : {"a", "b", "c", "d", "e"})
            store->addMenuKey(menukey::kRightMenu, dict({{"key", Value(key)}}), false);
    }
    Value storedEntry(size_t index) { return stored(menukey::kRightMenu).array().at(index); }
};

TEST_F(MenuManagerTest, AddHonoursTopAndMovesFollowTheInsertionRule) {
    store->addMenuKey(menukey::kRightMenu, dict({{"key", Value("top")}}), true);
    EXPECT_EQ(storedKeys(menukey::kRightMenu), (Keys{"top", "a", "b", "c", "d", "e"}));
    store->removeMenuKey(menukey::kRightMenu, "top");
    store->changePositionMenuKey(menukey::kRightMenu, 1, 4);
    EXPECT_EQ(storedKeys(menukey::kRightMenu), (Keys{"a", "c", "d", "b", "e"}));
    store->changePositionMenuKey(menukey::kRightMenu, 4, 1);
    EXPECT_EQ(storedKeys(menukey::kRightMenu), (Keys{"a", "e", "c", "d", "b"}));
    store->changePositionMenuKey(menukey::kRightMenu, 9, 0);
    EXPECT_EQ(storedKeys(menukey::kRightMenu).size(), 5u);
}

TEST_F(MenuManagerTest, RemoveTakesEqualTwinsAndDeletesFilesOutsideTheMainMenu) {
    std::string icon = folder.write("icon.png", "x"), other = folder.write("main.png", "x");
    store->addMenuKey(menukey::kCommonPath,
                      dict({{"path", Value("/srv/data")}, {"iconPath", Value(icon)}}), false);
    Value twin = dict({{"key", Value("x")}, {"iconPath", Value(other)}});
    for (int i = 0; i < 2; ++i)
        store->addMenuKey(menukey::kRightMenu, twin, false);
    store->addMenuKey(menukey::kRightMenu, dict({{"key", Value("x")}}), false);
    store->removeMenuKey(menukey::kCommonPath, "/srv/data");
    store->removeMenuKey(menukey::kRightMenu, "x");
    EXPECT_TRUE(stored(menukey::kCommonPath).array().empty());
    EXPECT_EQ(storedKeys(menukey::kRightMenu), (Keys{"a", "b", "c", "d", "e", "x"}));
    EXPECT_FALSE(test::exists(icon));
    EXPECT_TRUE(test::exists(other));
}

TEST_F(MenuManagerTest, UpdateChangesOnlyItsEntry) {
    store->updateMenuKey(menukey::kRightMenu, "c", "displayName", Value("Sea"));
    EXPECT_EQ(storedEntry(2).get("displayName"), Value("Sea"));
    store->updateMenuKey(menukey::kRightMenu, "c", "displayName", Value());
    EXPECT_FALSE(storedEntry(2).get("displayName"));
    Value before = stored(menukey::kRightMenu);
    store->updateMenuKey(menukey::kRightMenu, "zzz", "icon", Value("x"));
    EXPECT_EQ(stored(menukey::kRightMenu), before);
}

} // namespace
