#include "ExtensionFixture.h"
#include "support_files/ActionsFixture.h"

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

TEST_F(DispatchTest, TheReviewPromptComesAtTheThirdUseUntilAcceptedAndOpensTheSoftwareCentre) {
    auto workspace = std::make_shared<RecordingWorkspace>();
    platform::current().workspace = workspace;
    select({}, work.path());
    auto use = [&](FinderSync& finder, int times) {
        for (int i = 0; i < times; ++i) {
            Menu menu = finder.menuForMenuKind(MenuKind::ContextualContainer);
            finder.onMenuItemAction(find(menu, "Color Picker")->tag);
        }
    };
    ui->answers({"button 1001", "button 1000"});
    use(sync, 3);
    EXPECT_TRUE(ui->alerts().empty()) << "shown a few seconds later";
    queue::runUntilIdle();
    ASSERT_EQ(ui->alerts().size(), 1u);
    EXPECT_EQ(ui->alerts()[0].informative, localized("Review Tip"));
    EXPECT_FALSE(suite->boolForKey("is reviewed"));
    EXPECT_TRUE(workspace->opened.empty());

    // Where a person works at a terminal, the uses count but nothing asks.
    RecordingFinderSync terminal({.showReviewPrompt = false});
    use(terminal, 30);
    queue::runUntilIdle();
    EXPECT_EQ(ui->alerts().size(), 1u);
    EXPECT_EQ(suite->integerForKey("use count"), 33);

    use(sync, 30);
    queue::runUntilIdle();
    EXPECT_EQ(ui->alerts().size(), 2u);
    EXPECT_TRUE(suite->boolForKey("is reviewed"));
    ASSERT_EQ(workspace->opened.size(), 1u);
    EXPECT_TRUE(workspace->opened[0].starts_with("appstream:")) << workspace->opened[0];
    use(sync, 30);
    queue::runUntilIdle();
    EXPECT_EQ(ui->alerts().size(), 2u);
}

} // namespace
