#include "ConfigFixture.h"
#include "config/MenuKeys.h"
#include "config/PXDefaultData.h"

#include <algorithm>

using namespace px;
using px::plist::Value;

namespace {

class MenuListsTest : public test::ConfigFixture {
  protected:
    void storeMain(std::vector<Value> entries) {
        suite->setObject(menukey::kRightMenu, Value::makeArray(std::move(entries)));
    }
    static Value keyed(const char* key, plist::Dictionary fields = {}) {
        fields.emplace("key", Value(key));
        return dict(std::move(fields));
    }
    static PXMenuItem::Ptr find(const PXMenuItem::List& items, const std::string& key) {
        auto it = std::find_if(items.begin(), items.end(), [&](auto& i) { return i->key == key; });
        return it == items.end() ? nullptr : *it;
    }
};

TEST_F(MenuListsTest, DisabledEntriesAreLeftOutFlagsReadLooselyAndAppsJoinTheirListOnce) {
    storeMain({keyed("Code", {{"appName", Value("Visual Studio Code")}}),
               keyed("Copy to", {{"disabled", Value(true)}}), keyed("Terminal Window"),
               keyed("Delete", {{"disabled", Value("no")}}),
               keyed("Move to", {{"disabled", Value("YES")}}),
               keyed("Paste", {{"disabled", Value(2)}})});
    auto items = store->menuItemArray();
    EXPECT_EQ(keysOf(items), (std::vector<std::string>{"Code", "Terminal Window", "Delete"}));
    EXPECT_EQ(keysOf(PXMenuManager::belongAppMenuArray(items)),
              (std::vector<std::string>{"Code", "Terminal Window"}));
    EXPECT_TRUE(items[0]->isNotNeedURL);
    EXPECT_EQ(items[1]->serve, "New Terminal at Folder");
}

TEST_F(MenuListsTest, RunTimeAttributesFollowTheKey) {
    storeMain({keyed("Lock and Unlock", {{"appName", Value("Gedit")}}),
               keyed("Color Picker", {{"disabledAuth", Value(false)}})});
    auto items = store->menuItemArray();
    auto lock = find(items, "Lock and Unlock");
    EXPECT_TRUE(lock->isNeedSelectURL && !lock->isNotNeedURL) << "the key wins over appName";
    EXPECT_TRUE(find(items, "Color Picker")->disabledAuth);
}

TEST_F(MenuListsTest, WrongTypedFieldsReadAsEmptyAndDamagedListsGiveWayToTheFactoryList) {
    storeMain({keyed("Cut Paste", {{"cutPaths", Value("/tmp/x")}, {"disabled", Value("maybe")}}),
               keyed("Cut Paste", {{"cutPaths", Value::makeArray({Value("/a"), Value(3)})}})});
    auto items = store->menuItemArray();
    ASSERT_EQ(items.size(), 2u);
    EXPECT_TRUE(items[0]->cutPaths.empty());
    EXPECT_EQ(items[1]->cutPaths, (std::vector<std::string>{"/a"}));

    PXDefaultData(*store).recoverRightMenu();
    const auto expected = keysOf(store->menuItemArray());
    const std::vector<Value> damaged{
        Value(7),
        dict({{"key", Value("Copy to")}}),
        Value::makeArray({Value("not a dictionary")}),
        Value::makeArray({dict({{"key", Value(42)}})}),
    };
    for (const auto& list : damaged) {
        SCOPED_TRACE(list.description());
        suite->setObject(menukey::kRightMenu, list);
        testing::internal::CaptureStderr();
        EXPECT_EQ(keysOf(store->menuItemArray()), expected);
        EXPECT_NE(testing::internal::GetCapturedStderr().find("damaged"), std::string::npos);
        EXPECT_TRUE(stored(menukey::kRightMenu).isArray());
    }
}

TEST_F(MenuListsTest, NewFileListHonoursTheIncludeDisabledFlag) {
    PXDefaultData(*store).recoverNewFile();
    auto enabled = store->newFileTemplateMenuArray(false);
    auto all = store->newFileTemplateMenuArray(true);
    EXPECT_EQ(enabled.size(), 12u);
    EXPECT_EQ(all.size(), 20u);
    EXPECT_TRUE(find(all, "et")->disabled);
    EXPECT_FALSE(find(enabled, "et"));
}

TEST_F(MenuListsTest, CommonPathsAreStandardisedAndKeyedByPath) {
    test::ScopedXdg xdg;
    suite->setObject(menukey::kCommonPath,
                     Value::makeArray({dict({{"path", Value("~/Documents/../Desktop//")},
                                             {"key", Value("ignored")},
                                             {"icon", Value("star")}})}));
    auto paths = store->commonPathMenuArray();
    ASSERT_EQ(paths.size(), 1u);
    EXPECT_EQ(paths[0]->path, xdg.home() + "/Desktop");
    EXPECT_EQ(paths[0]->key, paths[0]->path);
    EXPECT_EQ(paths[0]->icon, "folder");
}

} // namespace
