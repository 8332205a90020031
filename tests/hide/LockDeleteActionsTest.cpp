#include "HideFixture.h"

using namespace px;
using namespace px::test;

namespace {

class LockActionsTest : public HideFixture {
  protected:
    std::string file(const std::string& name, unsigned mode) {
        std::string path = work.write(name, "x");
        ::chmod(path.c_str(), mode);
        return path;
    }
};

TEST_F(LockActionsTest, TheFirstLockedItemTurnsTheRestOfTheSelectionToUnlocking) {
    std::string first = file("1", 0644);
    std::string locked = file("2", 0444);
    std::string third = file("3", 0640);
    std::string fourth = file("4", 0600);
    ASSERT_TRUE(onItems({first, locked, third}, "Lock and Unlock"));
    EXPECT_EQ(modeOf(first), 0444u);
    EXPECT_EQ(modeOf(locked), 0644u);
    EXPECT_EQ(modeOf(third), 0640u);

    // Now the first item is locked, so the whole selection is unlocked, the first exactly.
    ASSERT_TRUE(onItems({fourth, first, third}, "Lock and Unlock"));
    EXPECT_EQ(modeOf(fourth), 0400u);
    EXPECT_EQ(modeOf(first), 0644u);
    EXPECT_EQ(modeOf(third), 0640u);
}

TEST_F(LockActionsTest, AllUnlockedLocksAndAllLockedUnlocksToTheFormerModes) {
    std::string a = file("a", 0640);
    std::string folder = work.mkdir("box");
    ::chmod(folder.c_str(), 0775);
    ASSERT_TRUE(onItems({a, folder}, "Lock and Unlock"));
    EXPECT_EQ(modeOf(a), 0440u);
    EXPECT_EQ(modeOf(folder), 0555u);
    ASSERT_TRUE(onItems({a, folder}, "Lock and Unlock"));
    EXPECT_EQ(modeOf(a), 0640u);
    EXPECT_EQ(modeOf(folder), 0775u);
    EXPECT_TRUE(ui->alerts().empty());
}

TEST_F(LockActionsTest, AVanishedItemIsPassedOverSilently) {
    std::string a = file("a", 0644);
    std::string gone = file("gone", 0644);
    std::string b = file("b", 0644);
    select({a, gone, b}, work.path());
    Menu menu = sync.menuForMenuKind(MenuKind::ContextualItems);
    ::unlink(gone.c_str());
    sync.onMenuItemAction(find(menu, "Lock and Unlock")->tag);
    EXPECT_EQ(modeOf(a), 0444u);
    EXPECT_EQ(modeOf(b), 0444u);
    EXPECT_TRUE(ui->alerts().empty());
}

class DeleteActionTest : public HideFixture {};

TEST_F(DeleteActionTest, WithoutConfirmationItemsGoAtOnce) {
    std::string a = work.write("a \"$(x)\".txt");
    std::string folder = work.mkdir("box");
    work.write("box/deep/inner.txt");
    ASSERT_TRUE(onItems({a, folder}, "Delete"));
    EXPECT_FALSE(exists(a));
    EXPECT_FALSE(exists(folder));
    EXPECT_TRUE(ui->alerts().empty());
}

TEST_F(DeleteActionTest, ConfirmationCancelKeepsEverythingAndOkDeletes) {
    suite->setBool("pref check0", true);
    std::string a = work.write("a.txt");
    ui->answer("button 1001");
    ASSERT_TRUE(onItems({a}, "Delete"));
    ASSERT_EQ(ui->alerts().size(), 1u);
    EXPECT_EQ(ui->alerts()[0].message, localized("Warn"));
    EXPECT_EQ(ui->alerts()[0].informative, localized("Delete Tip"));
    EXPECT_EQ(ui->alerts()[0].buttons,
              (std::vector<std::string>{localized("OK"), localized("Cancel")}));
    EXPECT_TRUE(exists(a));
    ui->answer("button 1000");
    ASSERT_TRUE(onItems({a}, "Delete"));
    EXPECT_FALSE(exists(a));
    EXPECT_EQ(ui->alerts().size(), 2u);
}

TEST_F(DeleteActionTest, EachFailedItemGetsOneAlertAndTheOthersStillGo) {
    std::string a = work.write("a");
    std::string gone1 = work.write("gone1");
    std::string b = work.write("b");
    std::string gone2 = work.write("gone2");
    select({gone1, a, gone2, b}, work.path());
    Menu menu = sync.menuForMenuKind(MenuKind::ContextualItems);
    ::unlink(gone1.c_str());
    ::unlink(gone2.c_str());
    sync.onMenuItemAction(find(menu, "Delete")->tag);
    EXPECT_FALSE(exists(a));
    EXPECT_FALSE(exists(b));
    ASSERT_EQ(ui->alerts().size(), 2u);
    for (const auto& alert : ui->alerts())
        EXPECT_EQ(alert.informative, localized("Delete Fail Tip"));
}

TEST_F(DeleteActionTest, NothingSelectedDeletesTheFolderBeingShown) {
    std::string folder = work.mkdir("shown");
    work.write("shown/a");
    select({}, folder);
    ASSERT_TRUE(choose(MenuKind::ContextualItems, "Delete"));
    EXPECT_FALSE(exists(folder));
    EXPECT_TRUE(exists(work.path()));
}

} // namespace
