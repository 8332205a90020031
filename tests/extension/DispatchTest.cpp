#include "ExtensionFixture.h"

using namespace px;
using namespace px::test;
using px::plist::Value;

namespace {

class DispatchTest : public ExtensionFixture {
  protected:
    // Builds the menu for the selection and picks the entry with the key path given.
    std::int64_t tagOf(const Menu& menu, std::vector<std::string> path) {
        const Menu* level = &menu;
        const MenuEntry* entry = nullptr;
        for (const auto& key : path) {
            entry = find(*level, key);
            if (!entry) return -1;
            level = &entry->children;
        }
        return entry->tag;
    }
    RecordingFinderSync sync;
};

TEST_F(DispatchTest, ChildrenRouteByTheTopItemsKind) {
    std::string png = work.write("a.png");
    enable("File Info");
    select({png}, work.path());
    Menu menu = sync.menuForMenuKind(MenuKind::ContextualItems);
    sync.onMenuItemAction(tagOf(menu, {"Convert to", "JPEG"}));
    menu = sync.menuForMenuKind(MenuKind::ContextualItems);
    sync.onMenuItemAction(tagOf(menu, {"File Info", "SHA256"}));
    menu = sync.menuForMenuKind(MenuKind::ContextualItems);
    sync.onMenuItemAction(tagOf(menu, {"New File", "md"}));
    menu = sync.menuForMenuKind(MenuKind::ContextualItems);
    sync.onMenuItemAction(tagOf(menu, {"Common App", "Visual Studio Code"}));
    EXPECT_EQ(sync.calls, (std::vector<std::string>{"convert:JPEG:5:Convert to", "info:SHA256:2",
                                                    "new:md", "app:Visual Studio Code:1"}));
}

TEST_F(DispatchTest, CopyToSelectFolderPassesTheChildAndGrandchildrenWin) {
    std::string favourite = work.mkdir("fav");
    work.mkdir("fav/inner");
    PXMenuManager::addMenuKey(menukey::kCommonPath,
                              Value::makeDictionary({{"path", Value(favourite)}}), false);
    std::string a = work.write("a.txt");
    select({a}, work.path());
    Menu menu = sync.menuForMenuKind(MenuKind::ContextualItems);
    sync.onMenuItemAction(tagOf(menu, {"Copy to", "Select Folder"}));
    menu = sync.menuForMenuKind(MenuKind::ContextualItems);
    sync.onMenuItemAction(tagOf(menu, {"Move to", favourite, favourite + "/inner"}));
    menu = sync.menuForMenuKind(MenuKind::ContextualItems);
    sync.onMenuItemAction(tagOf(menu, {"Move to", favourite, "Current Directory"}));
    EXPECT_EQ(sync.calls,
              (std::vector<std::string>{"copy:Select Folder", "move:" + favourite + "/inner",
                                        "move:" + favourite}));
}

TEST_F(DispatchTest, TheSettingsEntryOpensSettingsAndCountsNothing) {
    std::string a = work.write("a.txt");
    select({a}, work.path());
    Menu menu = sync.menuForMenuKind(MenuKind::ContextualItems);
    sync.onMenuItemAction(find(menu, "New File")->children.back().tag);
    EXPECT_EQ(sync.calls, (std::vector<std::string>{"goset"}));
    EXPECT_EQ(suite->integerForKey("use count"), 0);
}

TEST_F(DispatchTest, TagsOutsideTheMenuDoNothing) {
    std::string a = work.write("a.txt");
    select({a}, work.path());
    for (std::int64_t tag : {0L, 99L, 199L, 1L}) {
        sync.menuForMenuKind(MenuKind::ContextualItems);
        sync.onMenuItemAction(tag);
    }
    EXPECT_TRUE(sync.calls.empty());
    EXPECT_EQ(suite->integerForKey("use count"), 0);
}

TEST_F(DispatchTest, ItemsWithoutChildrenRouteAndCountTheirUse) {
    enable("Delete");
    std::string a = work.write("a.txt");
    select({a}, work.path());
    Menu menu = sync.menuForMenuKind(MenuKind::ContextualItems);
    sync.onMenuItemAction(tagOf(menu, {"Delete"}));
    menu = sync.menuForMenuKind(MenuKind::ContextualItems);
    sync.onMenuItemAction(tagOf(menu, {"Copy Path"}));
    menu = sync.menuForMenuKind(MenuKind::ContextualItems);
    sync.onMenuItemAction(tagOf(menu, {"Terminal Window"}));
    menu = sync.menuForMenuKind(MenuKind::ContextualItems);
    sync.onMenuItemAction(tagOf(menu, {"Hide Selected Files"}));
    EXPECT_EQ(sync.calls,
              (std::vector<std::string>{"delete", "copypath", "serve:New Terminal at Folder:-",
                                        "hide:Hide Selected Files"}));
    EXPECT_EQ(suite->integerForKey("Delete"), 1);
    EXPECT_EQ(suite->integerForKey("use count"), 4);
}

TEST_F(DispatchTest, TheReviewPromptComesAtTheThirdUseUntilAccepted) {
    select({}, work.path());
    auto useColorPicker = [&] {
        Menu menu = sync.menuForMenuKind(MenuKind::ContextualContainer);
        sync.onMenuItemAction(tagOf(menu, {"Color Picker"}));
    };
    ui->answer("button 1001");
    for (int i = 0; i < 3; ++i)
        useColorPicker();
    EXPECT_TRUE(ui->alerts().empty());
    queue::runUntilIdle();
    ASSERT_EQ(ui->alerts().size(), 1u);
    EXPECT_EQ(ui->alerts()[0].informative, localized("Review Tip"));
    EXPECT_FALSE(suite->boolForKey("is reviewed"));
    for (int i = 0; i < 30; ++i)
        useColorPicker();
    ui->answer("button 1000");
    queue::runUntilIdle();
    EXPECT_EQ(ui->alerts().size(), 2u);
    EXPECT_TRUE(suite->boolForKey("is reviewed"));
    for (int i = 0; i < 30; ++i)
        useColorPicker();
    queue::runUntilIdle();
    EXPECT_EQ(ui->alerts().size(), 2u);
}

} // namespace
