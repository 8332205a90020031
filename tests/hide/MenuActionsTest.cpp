// The visibility, lock and delete entries picked from a real menu, on real files.
#include "actions/HiddenFile.h"
#include "support/Xdg.h"
#include "support_files/ActionsFixture.h"

using namespace px;
using namespace px::test;

namespace {

using Names = std::vector<std::string>;

class MenuActionsTest : public ActionsFixture {
  protected:
    void SetUp() override {
        ActionsFixture::SetUp();
        suite->setBool("is reviewed", true); // no review prompt among the answers
        for (const char* key : {"Delete", "Lock and Unlock", "Hide Selected Files",
                                "Hide All Files", "Unhide All Files", "System Hide Files"})
            enable(key);
    }
    // Picks the top-level entry with the key from the menu, as the user would; `meanwhile` runs
    // between the menu and the choice.
    bool choose(MenuKind kind, const std::string& key,
                const std::function<void()>& meanwhile = {}) {
        Menu menu = sync.menuForMenuKind(kind);
        const MenuEntry* entry = find(menu, key);
        if (!entry) return false;
        if (meanwhile) meanwhile();
        sync.onMenuItemAction(entry->tag);
        queue::runUntilIdle();
        return true;
    }
    bool onItems(std::vector<std::string> paths, const std::string& key,
                 const std::function<void()>& meanwhile = {}) {
        select(std::move(paths), work.path());
        return choose(MenuKind::ContextualItems, key, meanwhile);
    }
    bool onBackground(const std::string& folder, const std::string& key) {
        select({}, folder);
        return choose(MenuKind::ContextualContainer, key);
    }

    Session sync{*this};
};

TEST_F(MenuActionsTest, SelectedItemsGoIntoTheirOwnFoldersListsAndUnhideTakesOnlyThem) {
    std::string a = work.write("a.txt"), quoted = work.write("a\"; rm x $(reboot)");
    std::string inner = work.write("sub/inner.txt"), folder = work.mkdir("box");
    ASSERT_TRUE(onItems({a, inner, quoted, folder + "/"}, "Hide Selected Files"));
    EXPECT_EQ(hiddenfile::listedNames(work.path()), (Names{"a.txt", "a\"; rm x $(reboot)", "box"}));
    EXPECT_EQ(hiddenfile::listedNames(work / "sub"), (Names{"inner.txt"}));
    ASSERT_TRUE(onItems({a, inner}, "Unhide All Files"));
    EXPECT_EQ(hiddenfile::listedNames(work.path()), (Names{"a\"; rm x $(reboot)", "box"}));
    EXPECT_FALSE(exists(work / "sub/.hidden"));
}

TEST_F(MenuActionsTest, BackgroundHideAllAndUnhideAllActOnTheVisibleEntriesOnly) {
    std::string folder = work.mkdir("shown");
    for (const char* name : {"zeta", "alpha", ".dot", "mid dle", "sub/x"})
        work.write(std::string("shown/") + name);
    work.write("shown/.hidden", "# mine\nkept\nalpha\n.dot\n");
    ASSERT_TRUE(onBackground(folder, "Hide All Files"));
    ASSERT_TRUE(onBackground(folder, "Hide All Files"));
    EXPECT_EQ(hiddenfile::listedNames(folder),
              (Names{"# mine", "kept", "alpha", ".dot", "mid dle", "sub", "zeta"}));
    ASSERT_TRUE(onBackground(folder, "Unhide All Files"));
    EXPECT_EQ(readFile(folder + "/.hidden"), "# mine\nkept\n.dot\n");
    EXPECT_FALSE(exists(folder + "/sub/.hidden"));

    std::string empty = work.mkdir("empty");
    ASSERT_TRUE(onBackground(empty, "Hide All Files"));
    EXPECT_FALSE(exists(empty + "/.hidden"));
    EXPECT_TRUE(ui->alerts().empty());
}

TEST_F(MenuActionsTest, SystemHideFilesCopiesTheInstructionAndOpensTheChosenTerminal) {
    const std::string show = "gsettings set org.gtk.gtk4.Settings.FileChooser show-hidden ";
    struct Case {
        std::string first, second, clipboard;
        Names services;
    };
    const std::vector<Case> cases{
        {"button 1000", "button 1000", show + "true", {"New Terminal at Folder"}},
        {"button 1001", "button 1001", show + "false", {"New iTerm2 Window Here"}},
        {"button 1002", "", "before", {}},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.first + " then " + test.second);
        ui = std::make_shared<platform::FakeUi>();
        systemServices = std::make_shared<platform::FakeServices>();
        sync.restart();
        pasteboard->setString("before");
        ui->answer(test.first);
        if (!test.second.empty()) ui->answer(test.second);
        ASSERT_TRUE(onBackground(work.path(), "System Hide Files"));
        EXPECT_EQ(ui->alerts().size(), test.second.empty() ? 1u : 2u);
        EXPECT_EQ(pasteboard->string(), test.clipboard);
        Names requested;
        for (const auto& request : systemServices->requests()) {
            requested.push_back(request.name);
            EXPECT_EQ(request.paths, Names{xdg::userDirectory("DESKTOP")});
        }
        EXPECT_EQ(requested, test.services);
    }
}

TEST_F(MenuActionsTest, AnItemVanishedBeforeTheChoiceIsPassedOverSilently) {
    std::string a = work.write("a"), gone = work.write("gone"), b = work.write("b");
    ASSERT_TRUE(onItems({a, gone, b}, "Lock and Unlock", [&] { ::unlink(gone.c_str()); }));
    EXPECT_EQ(modeOf(a), 0444u);
    EXPECT_EQ(modeOf(b), 0444u);
    EXPECT_TRUE(ui->alerts().empty());
}

TEST_F(MenuActionsTest, DeleteWithoutConfirmationTakesTreesAndTheFolderShownWhenNothingIsSelected) {
    std::string a = work.write("a \"$(x)\".txt"), folder = work.mkdir("box");
    work.write("box/deep/inner.txt");
    ASSERT_TRUE(onItems({a, folder}, "Delete"));
    EXPECT_FALSE(exists(a) || exists(folder));

    std::string shown = work.mkdir("shown");
    work.write("shown/a");
    select({}, shown);
    ASSERT_TRUE(choose(MenuKind::ContextualItems, "Delete"));
    EXPECT_FALSE(exists(shown));
    EXPECT_TRUE(exists(work.path()));
    EXPECT_TRUE(ui->alerts().empty());
}

} // namespace
