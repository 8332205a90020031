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
    Session sync{*this, recording()};
};

// The command-line runs route every kind of entry to its action; these are the nested ones.
TEST_F(DispatchTest, ChildrenRouteByTheTopItemAndEveryUseIsCounted) {
    const std::string favourite = work.mkdir("fav");
    work.mkdir("fav/inner");
    store->addMenuKey(menukey::kCommonPath, Value::makeDictionary({{"path", Value(favourite)}}),
                      false);
    enable("Delete");
    select({work.write("a.png")}, work.path());
    const std::vector<std::pair<std::vector<std::string>, std::string>> cases{
        {{"Convert to", "JPEG"}, "convert:JPEG:5:Convert to"},
        {{"Common App", "Visual Studio Code"}, "app:Visual Studio Code"},
        {{"Move to", favourite, favourite + "/inner"}, "move:" + favourite + "/inner"},
        {{"Move to", favourite, "Current Directory"}, "move:" + favourite},
        {{"Delete"}, "delete"}};
    for (const auto& [path, call] : cases) {
        calls.clear();
        pick(path);
        EXPECT_EQ(calls, std::vector<std::string>{call});
    }
    EXPECT_EQ(suite->integerForKey("Delete"), 1);
    EXPECT_EQ(suite->integerForKey("use count"), 5);
}

TEST_F(DispatchTest, TheSettingsEntryAndTagsOutsideTheMenuCountNothing) {
    select({work.write("a.txt")}, work.path());
    Menu menu = sync.menuForMenuKind(MenuKind::ContextualItems);
    sync.onMenuItemAction(find(menu, "New File")->children.back().tag);
    EXPECT_EQ(calls, (std::vector<std::string>{"goset"}));
    for (std::int64_t tag : {0L, 99L, 199L, 1L}) {
        sync.menuForMenuKind(MenuKind::ContextualContainer);
        sync.onMenuItemAction(tag);
    }
    EXPECT_EQ(calls.size(), 1u);
    EXPECT_EQ(suite->integerForKey("use count"), 0);
}

TEST_F(DispatchTest, TheReviewPromptComesAtTheThirdUseUntilAcceptedAndOpensTheSoftwareCentre) {
    select({}, work.path());
    // One request per use, as hosts make them; each waits for its queued work.
    auto use = [&](int times, bool offersReview) {
        for (int i = 0; i < times; ++i) {
            Request request({{}, work.path(), MenuKind::ContextualContainer, {}, services(), store,
                             offersReview});
            RecordingActions actions(request, calls);
            BuiltMenu menu = buildMenu(request);
            dispatch(menu, find(menu.entries, "Color Picker")->tag, request, actions);
            queue::runUntilIdle();
        }
    };
    ui->answers({"button 1001", "button 1000"});
    {
        Request request({{}, work.path(), MenuKind::ContextualContainer, {}, services(), store});
        RecordingActions actions(request, calls);
        for (int i = 0; i < 3; ++i) {
            BuiltMenu menu = buildMenu(request);
            dispatch(menu, find(menu.entries, "Color Picker")->tag, request, actions);
        }
        EXPECT_TRUE(ui->alerts().empty()) << "shown a few seconds later";
        queue::runUntilIdle();
    }
    ASSERT_EQ(ui->alerts().size(), 1u);
    EXPECT_EQ(ui->alerts()[0].informative, localized("Review Tip"));
    EXPECT_FALSE(suite->boolForKey("is reviewed"));
    EXPECT_TRUE(workspace->opened.empty());

    // Where a person works at a terminal, the uses count but nothing asks.
    use(30, false);
    EXPECT_EQ(ui->alerts().size(), 1u);
    EXPECT_EQ(suite->integerForKey("use count"), 33);

    use(30, true);
    EXPECT_EQ(ui->alerts().size(), 2u);
    EXPECT_TRUE(suite->boolForKey("is reviewed"));
    ASSERT_EQ(workspace->opened.size(), 1u);
    EXPECT_TRUE(workspace->opened[0].starts_with("appstream:")) << workspace->opened[0];
    use(30, true);
    EXPECT_EQ(ui->alerts().size(), 2u);
}

} // namespace

namespace {

// The host names the entry it showed; when the menu built again has another entry at the tag,
// nothing runs.
TEST_F(DispatchTest, AnEntryIsRunOnlyWhenItStillHasTheKeysTheHostShowed) {
    enable("Delete");
    suite->setBool("is reviewed", true);
    const std::string file = work.write("a.png");
    select({file}, work.path());
    const Menu shown = sync.menuForMenuKind(MenuKind::ContextualItems);
    const std::int64_t deleteTag = find(shown, "Delete")->tag;
    const std::int64_t jpegTag = find(find(shown, "Convert to")->children, "JPEG")->tag;
    struct Case {
        std::int64_t tag;
        std::vector<std::string> keys;
        DispatchResult result;
    };
    const std::vector<Case> cases{{deleteTag, {"Delete"}, DispatchResult::Ran},
                                  {jpegTag, {"Convert to", "JPEG"}, DispatchResult::Ran},
                                  {jpegTag, {"Convert to", "PNG"}, DispatchResult::KeyPathChanged},
                                  {deleteTag, {"Copy Path"}, DispatchResult::KeyPathChanged},
                                  {deleteTag, {}, DispatchResult::Ran},
                                  {4242, {"Delete"}, DispatchResult::TagNotFound}};
    for (const auto& [tag, keys, result] : cases) {
        SCOPED_TRACE(tag);
        calls.clear();
        Request request({{file}, work.path(), MenuKind::ContextualItems, keys, services(), store});
        RecordingActions actions(request, calls);
        EXPECT_EQ(dispatch(buildMenu(request), tag, request, actions), result);
        queue::runUntilIdle();
        EXPECT_EQ(calls.size(), result == DispatchResult::Ran ? 1u : 0u);
    }
}

} // namespace
