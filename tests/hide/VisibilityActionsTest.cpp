#include "HideFixture.h"
#include "actions/HiddenFile.h"

using namespace px;
using namespace px::test;

namespace {

using Names = std::vector<std::string>;

class VisibilityActionsTest : public HideFixture {
  protected:
    Names listed(const std::string& folder) { return hiddenfile::listedNames(folder); }
};

TEST_F(VisibilityActionsTest, SelectedItemsGoIntoTheirOwnFoldersLists) {
    std::string a = work.write("a.txt");
    std::string quoted = work.write("a\"; rm x $(reboot)");
    std::string inner = work.write("sub/inner.txt");
    std::string folder = work.mkdir("box");
    ASSERT_TRUE(onItems({a, inner, quoted, folder + "/"}, "Hide Selected Files"));
    EXPECT_EQ(listed(work.path()), (Names{"a.txt", "a\"; rm x $(reboot)", "box"}));
    EXPECT_EQ(listed(work / "sub"), (Names{"inner.txt"}));
    EXPECT_TRUE(exists(a) && exists(quoted) && exists(inner));

    // Unhide with a selection acts on the selected items only.
    ASSERT_TRUE(onItems({a, inner}, "Unhide All Files"));
    EXPECT_EQ(listed(work.path()), (Names{"a\"; rm x $(reboot)", "box"}));
    EXPECT_FALSE(exists(work / "sub/.hidden"));
}

TEST_F(VisibilityActionsTest, HidingTakesTheSelectionTheFileManagerHasNow) {
    std::string a = work.write("a.txt");
    std::string b = work.write("b.txt");
    select({a}, work.path());
    Menu menu = sync.menuForMenuKind(MenuKind::ContextualItems);
    controller->setSelection({b});
    sync.onMenuItemAction(find(menu, "Hide Selected Files")->tag);
    EXPECT_EQ(listed(work.path()), (Names{"b.txt"}));
}

TEST_F(VisibilityActionsTest, NamesWithLineBreaksAreSkippedAndTheRestIsHidden) {
    std::string odd = work.write("two\nlines");
    std::string plain = work.write("plain");
    ASSERT_TRUE(onItems({odd, plain}, "Hide Selected Files"));
    EXPECT_EQ(readFile(work / ".hidden"), "plain\n");
}

TEST_F(VisibilityActionsTest, BackgroundHideAllAndUnhideAllActOnTheVisibleEntries) {
    std::string folder = work.mkdir("shown");
    for (const char* name : {"zeta", "alpha", ".dot", "mid dle"})
        work.write(std::string("shown/") + name);
    work.mkdir("shown/sub");
    work.write("shown/.hidden", "# mine\nkept\nalpha\n");
    ASSERT_TRUE(onBackground(folder, "Hide All Files"));
    EXPECT_EQ(listed(folder), (Names{"# mine", "kept", "alpha", "mid dle", "sub", "zeta"}));
    ASSERT_TRUE(onBackground(folder, "Hide All Files"));
    EXPECT_EQ(listed(folder).size(), 6u);
    ASSERT_TRUE(onBackground(folder, "Unhide All Files"));
    EXPECT_EQ(readFile(folder + "/.hidden"), "# mine\nkept\n");
    EXPECT_FALSE(exists(folder + "/sub/.hidden"));
}

TEST_F(VisibilityActionsTest, UnhideAllLeavesDotNamesAndEmptyFoldersAlone) {
    std::string dots = work.mkdir("dots");
    work.write("dots/.a");
    work.write("dots/.hidden", ".a\n");
    ASSERT_TRUE(onBackground(dots, "Unhide All Files"));
    EXPECT_EQ(readFile(dots + "/.hidden"), ".a\n");

    std::string empty = work.mkdir("empty");
    ASSERT_TRUE(onBackground(empty, "Hide All Files"));
    EXPECT_FALSE(exists(empty + "/.hidden"));
    EXPECT_TRUE(ui->alerts().empty());
}

TEST_F(VisibilityActionsTest, SystemHideFilesAsksThenCopiesTheInstruction) {
    pasteboard->setString("before");
    ui->answer("button 1002");
    ASSERT_TRUE(onBackground(work.path(), "System Hide Files"));
    ASSERT_EQ(ui->alerts().size(), 1u);
    const auto& first = ui->alerts()[0];
    EXPECT_EQ(first.message, localized("System Hide Files"));
    EXPECT_EQ(first.informative, localized("System Hide Files Tip"));
    EXPECT_EQ(first.buttons, (Names{localized("System Hide Files Show"),
                                    localized("System Hide Files Hide"), localized("Cancel")}));
    EXPECT_EQ(pasteboard->string(), "before");

    ui->answers({"button 1000", "button 1002"});
    ASSERT_TRUE(onBackground(work.path(), "System Hide Files"));
    ASSERT_EQ(ui->alerts().size(), 3u);
    const auto& second = ui->alerts()[2];
    EXPECT_EQ(second.message, localized("System Hide Files Show"));
    EXPECT_EQ(second.informative, localized("Copy Instruction Tip"));
    EXPECT_EQ(second.buttons, (Names{localized("Paste to Terminal"), localized("Paste to iTerm2"),
                                     localized("Cancel")}));
    EXPECT_EQ(pasteboard->string(),
              "gsettings set org.gtk.gtk4.Settings.FileChooser show-hidden true");

    ui->answers({"button 1001", "button 1002"});
    ASSERT_TRUE(onBackground(work.path(), "System Hide Files"));
    EXPECT_EQ(ui->alerts().at(4).message, localized("System Hide Files Hide"));
    EXPECT_EQ(pasteboard->string(),
              "gsettings set org.gtk.gtk4.Settings.FileChooser show-hidden false");
}

} // namespace
