#include "EmbedFixture.h"
#include "actions/EmbedFolderPrompt.h"

#include <filesystem>

using namespace px;
using namespace px::test;

namespace {

using Names = std::vector<std::string>;

class EmbedActionsTest : public EmbedFixture {
  protected:
    bool embed(Names paths, const std::function<void()>& beforeChoosing = {}) {
        return choose(std::move(paths), "Embed in Folder", beforeChoosing);
    }
};

TEST_F(EmbedActionsTest, ASingleItemGoesIntoAFolderNamedAfterItWithoutAsking) {
    std::string report = work.write("report.pdf", "pdf");
    ASSERT_TRUE(embed({report}));
    EXPECT_EQ(readFile(work / "report/report.pdf"), "pdf");
    EXPECT_FALSE(exists(report));

    // The name "report" is now taken, so the next one is report-1.
    ASSERT_TRUE(embed({work.write("report.pdf", "second")}));
    EXPECT_EQ(readFile(work / "report-1/report.pdf"), "second");
    EXPECT_EQ(readFile(work / "report/report.pdf"), "pdf");

    std::string photos = work.mkdir("Photos");
    work.write("Photos/p.png", "png");
    ASSERT_TRUE(embed({photos}));
    EXPECT_EQ(readFile(work / "Photos-1/Photos/p.png"), "png");
    EXPECT_TRUE(ui->embeds().empty());
    EXPECT_TRUE(ui->alerts().empty());
}

TEST_F(EmbedActionsTest, NamesThatClashInsideTheNewFolderAreAllKept) {
    std::string picture = work.write("a.jpg", "picture"), bare = work.write("jpg", "bare file");
    std::string dotfile = work.write(".profile", "dot");
    ui->answer("embed 1 Mixed");
    ASSERT_TRUE(embed({picture, bare, dotfile}));
    EXPECT_EQ(readFile(work / "Mixed/jpg/a.jpg"), "picture");
    EXPECT_EQ(readFile(work / "Mixed/jpg-1"), "bare file");
    EXPECT_EQ(readFile(work / "Mixed/.profile"), "dot");

    // Same names from two folders; the new folder is made beside the first item and may have
    // any name the user types.
    std::string one = work.write("one/x.txt", "first"), two = work.write("two/x.txt", "second");
    ui->answer("embed 0 $(reboot) \"x\"");
    ASSERT_TRUE(embed({one, two}));
    EXPECT_EQ(readFile(work / "one/$(reboot) \"x\"/x.txt"), "first");
    EXPECT_EQ(readFile(work / "one/$(reboot) \"x\"/x-1.txt"), "second");
    EXPECT_TRUE(ui->alerts().empty());
    EXPECT_EQ(sync.cx().embedPrompt, nullptr);
}

TEST_F(EmbedActionsTest, AnUnusableNameKeepsTheDialogOpenWithWhatWasTyped) {
    std::string a = work.write("a"), b = work.write("b");
    ui->answers({"embed 0    ", "embed 1 x/y", "embed 0 ..", "embed 1 Named"});
    ASSERT_TRUE(embed({a, b}));
    ASSERT_EQ(ui->embeds().size(), 4u);
    EXPECT_EQ(ui->embeds()[2].defaultName, "x/y");
    EXPECT_TRUE(exists(work / "Named/a") && exists(work / "Named/b"));
    EXPECT_FALSE(exists(work / "x"));
}

TEST_F(EmbedActionsTest, CancelChangesNothingAndReleasesTheDialog) {
    std::string a = work.write("a"), b = work.write("b");
    ui->answer("cancel");
    ASSERT_TRUE(embed({a, b}));
    EXPECT_EQ(filehash::folderEntries(work.path()).size(), 2u);
    EXPECT_TRUE(ui->alerts().empty());
    EXPECT_EQ(sync.cx().embedPrompt, nullptr);
}

TEST_F(EmbedActionsTest, AVanishedItemIsReportedAndTheOthersStillMove) {
    std::string a = work.write("a", "a"), gone = work.write("gone"), b = work.write("b", "b");
    ui->answer("embed 0 Box");
    ASSERT_TRUE(embed({a, gone, b}, [&] { ::unlink(gone.c_str()); }));
    EXPECT_EQ(readFile(work / "Box/a"), "a");
    EXPECT_EQ(readFile(work / "Box/b"), "b");
    EXPECT_EQ(alertTexts(*ui), Names{localized("Error Common Tip")});
}

TEST_F(EmbedActionsTest, AFolderThatCannotBeMadeLeavesTheItemsWithoutAnAlert) {
    std::string a = work.write("a", "a"), b = work.write("b", "b");
    ui->answer("embed 0 " + std::string(256, 'n')); // longer than a name may be
    ASSERT_TRUE(embed({a, b}));
    EXPECT_EQ(filehash::folderEntries(work.path()).size(), 2u);
    EXPECT_EQ(readFile(a), "a");
    EXPECT_TRUE(ui->alerts().empty());
}

TEST(EmbedFolderPromptTest, TheHandlerGetsOneAnswerPerOpening) {
    platform::FakeUi ui;
    EmbedFolderPrompt dialog(ui);
    std::vector<std::pair<std::string, int>> answers;
    dialog.handler = [&](const std::string& name, int mode) { answers.emplace_back(name, mode); };
    EXPECT_FALSE(dialog.onSure(" \n", 1));
    EXPECT_FALSE(dialog.onSure("(null)", 1));
    dialog.onCancel();
    dialog.onCancel();
    EXPECT_TRUE(dialog.onSure("Late", 1));
    EXPECT_EQ(answers, (std::vector<std::pair<std::string, int>>{{"", 0}}));
}

} // namespace
