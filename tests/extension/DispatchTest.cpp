#include "ExtensionFixture.h"

using namespace px;
using namespace px::test;
using px::plist::Value;

namespace {

class DispatchTest : public ExtensionFixture {
  protected:
    // Builds the menu afresh and picks the entry at the key path given, as the file manager does.
    void pick(std::vector<std::string> path, MenuKind kind = MenuKind::ContextualItems) {
        Menu menu = sync.menuForMenuKind(kind);
        const Menu* level = &menu;
        const MenuEntry* entry = nullptr;
        for (const auto& key : path) {
            entry = find(*level, key);
            ASSERT_TRUE(entry) << key;
            level = &entry->children;
        }
        sync.onMenuItemAction(entry->tag);
    }
    RecordingFinderSync sync;
};

// The command-line runs route every kind of entry to its action; these are the nested ones.
TEST_F(DispatchTest, ChildrenRouteByTheTopItemAndEveryUseIsCounted) {
    const std::string favourite = work.mkdir("fav");
    work.mkdir("fav/inner");
    PXMenuManager::addMenuKey(menukey::kCommonPath,
                              Value::makeDictionary({{"path", Value(favourite)}}), false);
    enable("Delete");
    select({work.write("a.png")}, work.path());
    const std::vector<std::pair<std::vector<std::string>, std::string>> cases{
        {{"Convert to", "JPEG"}, "convert:JPEG:5:Convert to"},
        {{"Common App", "Visual Studio Code"}, "app:Visual Studio Code:1"},
        {{"Move to", favourite, favourite + "/inner"}, "move:" + favourite + "/inner"},
        {{"Move to", favourite, "Current Directory"}, "move:" + favourite},
        {{"Delete"}, "delete"}};
    for (const auto& [path, call] : cases) {
        sync.calls.clear();
        pick(path);
        EXPECT_EQ(sync.calls, std::vector<std::string>{call});
    }
    EXPECT_EQ(suite->integerForKey("Delete"), 1);
    EXPECT_EQ(suite->integerForKey("use count"), 5);
}

TEST_F(DispatchTest, TheSettingsEntryAndTagsOutsideTheMenuCountNothing) {
    select({work.write("a.txt")}, work.path());
    Menu menu = sync.menuForMenuKind(MenuKind::ContextualItems);
    sync.onMenuItemAction(find(menu, "New File")->children.back().tag);
    EXPECT_EQ(sync.calls, (std::vector<std::string>{"goset"}));
    for (std::int64_t tag : {0L, 99L, 199L, 1L}) {
        sync.menuForMenuKind(MenuKind::ContextualContainer);
        sync.onMenuItemAction(tag);
    }
    EXPECT_EQ(sync.calls.size(), 1u);
    EXPECT_EQ(suite->integerForKey("use count"), 0);
}

TEST_F(DispatchTest, TheReviewPromptComesAtTheThirdUseUntilAccepted) {
    select({}, work.path());
    auto use = [&](int times) {
        for (int i = 0; i < times; ++i)
            pick({"Color Picker"}, MenuKind::ContextualContainer);
    };
    ui->answers({"button 1001", "button 1000"});
    use(3);
    EXPECT_TRUE(ui->alerts().empty()) << "shown a few seconds later";
    queue::runUntilIdle();
    ASSERT_EQ(ui->alerts().size(), 1u);
    EXPECT_EQ(ui->alerts()[0].informative, localized("Review Tip"));
    EXPECT_FALSE(suite->boolForKey("is reviewed"));
    use(30);
    queue::runUntilIdle();
    EXPECT_EQ(ui->alerts().size(), 2u);
    EXPECT_TRUE(suite->boolForKey("is reviewed"));
    use(30);
    queue::runUntilIdle();
    EXPECT_EQ(ui->alerts().size(), 2u);
}

} // namespace
