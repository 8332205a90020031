#include "EmbedFixture.h"
#include "actions/PXEmbedFolderWinCtl.h"

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
    std::string again = work.write("report.pdf", "second");
    ASSERT_TRUE(embed({again}));
    EXPECT_EQ(readFile(work / "report-1/report.pdf"), "second");
    EXPECT_EQ(readFile(work / "report/report.pdf"), "pdf");

    std::string photos = work.mkdir("Photos");
    work.write("Photos/p.png", "png");
    ASSERT_TRUE(embed({photos}));
    EXPECT_EQ(readFile(work / "Photos-1/Photos/p.png"), "png");
    EXPECT_TRUE(ui->embeds().empty());
    EXPECT_TRUE(ui->alerts().empty());
}

TEST_F(EmbedActionsTest, SeveralItemsAskForTheNameAndMoveEveryItemIn) {
    std::string a = work.write("a.txt", "a");
    std::string folder = work.mkdir("sub");
    work.write("sub/inner", "i");
    ui->answer("embed 0 Box");
    ASSERT_TRUE(embed({a, folder}));
    ASSERT_EQ(ui->embeds().size(), 1u);
    EXPECT_EQ(ui->embeds()[0].defaultName, localized("Untitled"));
    EXPECT_EQ(ui->embeds()[0].modes,
              (Names{localized("Not classified"), localized("Classify by file extension")}));
    EXPECT_EQ(readFile(work / "Box/a.txt"), "a");
    EXPECT_EQ(readFile(work / "Box/sub/inner"), "i");
    EXPECT_FALSE(exists(a) || exists(folder));
    EXPECT_EQ(sync.embedFolderWinCtl, nullptr);
}

TEST_F(EmbedActionsTest, SortingByExtensionIgnoresCaseAndLeavesPlainNamesAtTheTop) {
    std::string upper = work.write("a.JPG", "1"), lower = work.write("b.jpg", "2");
    std::string plain = work.write("c", "3"), text = work.write("notes.Txt", "4");
    std::string dotfile = work.write(".profile", "5");
    ui->answer("embed 1 Sorted");
    ASSERT_TRUE(embed({upper, lower, plain, text, dotfile}));
    EXPECT_EQ(readFile(work / "Sorted/jpg/a.JPG"), "1");
    EXPECT_EQ(readFile(work / "Sorted/jpg/b.jpg"), "2");
    EXPECT_EQ(readFile(work / "Sorted/c"), "3");
    EXPECT_EQ(readFile(work / "Sorted/txt/notes.Txt"), "4");
    EXPECT_EQ(readFile(work / "Sorted/.profile"), "5");
    EXPECT_FALSE(exists(work / "Sorted/JPG"));
    EXPECT_TRUE(ui->alerts().empty());
}

TEST_F(EmbedActionsTest, AnItemNamedLikeAnExtensionFolderIsKeptUnderAFreeName) {
    std::string picture = work.write("a.jpg", "picture");
    std::string bare = work.write("jpg", "bare file");
    ui->answer("embed 1 Mixed");
    ASSERT_TRUE(embed({picture, bare}));
    EXPECT_EQ(readFile(work / "Mixed/jpg/a.jpg"), "picture");
    EXPECT_EQ(readFile(work / "Mixed/jpg-1"), "bare file");
}

TEST_F(EmbedActionsTest, ItemsWithTheSameNameFromTwoFoldersAreBothKept) {
    std::string one = work.write("one/x.txt", "first");
    std::string two = work.write("two/x.txt", "second");
    ui->answer("embed 0 Both");
    ASSERT_TRUE(embed({one, two}));
    // The folder is made beside the first item.
    EXPECT_EQ(readFile(work / "one/Both/x.txt"), "first");
    EXPECT_EQ(readFile(work / "one/Both/x-1.txt"), "second");
    EXPECT_TRUE(ui->alerts().empty());
}

TEST_F(EmbedActionsTest, AnUnusableNameKeepsTheDialogOpenWithWhatWasTyped) {
    std::string a = work.write("a"), b = work.write("b");
    ui->answers({"embed 0    ", "embed 1 x/y", "embed 0 ..", "embed 1 Named"});
    ASSERT_TRUE(embed({a, b}));
    ASSERT_EQ(ui->embeds().size(), 4u);
    EXPECT_EQ(ui->embeds()[2].defaultName, "x/y");
    EXPECT_TRUE(exists(work / "Named/a") && exists(work / "Named/b"));
    EXPECT_FALSE(exists(work / "x"));
    EXPECT_EQ(ui->remainingAnswers(), 0u);
}

TEST_F(EmbedActionsTest, CancelChangesNothingAndReleasesTheDialog) {
    std::string a = work.write("a"), b = work.write("b");
    ui->answer("cancel");
    ASSERT_TRUE(embed({a, b}));
    EXPECT_TRUE(exists(a) && exists(b));
    EXPECT_EQ(filehash::folderEntries(work.path()).size(), 2u);
    EXPECT_TRUE(ui->alerts().empty());
    EXPECT_EQ(sync.embedFolderWinCtl, nullptr);
}

TEST_F(EmbedActionsTest, AVanishedItemIsReportedAndTheOthersStillMove) {
    std::string a = work.write("a", "a"), gone = work.write("gone"), b = work.write("b", "b");
    ui->answer("embed 0 Box");
    ASSERT_TRUE(embed({a, gone, b}, [&] { ::unlink(gone.c_str()); }));
    EXPECT_EQ(readFile(work / "Box/a"), "a");
    EXPECT_EQ(readFile(work / "Box/b"), "b");
    EXPECT_EQ(alertTexts(), Names{localized("Error Common Tip")});
}

TEST_F(EmbedActionsTest, QuotesAndCommandTextInNamesAreOrdinaryCharacters) {
    std::string odd = work.write("a \"$(touch pwned)\".txt", "odd");
    std::string quote = work.write("b'; rm -rf x `id`", "quote");
    ui->answer("embed 0 $(reboot) \"x\"");
    ASSERT_TRUE(embed({odd, quote}));
    const std::string folder = work / "$(reboot) \"x\"";
    EXPECT_EQ(readFile(folder + "/a \"$(touch pwned)\".txt"), "odd");
    EXPECT_EQ(readFile(folder + "/b'; rm -rf x `id`"), "quote");
    EXPECT_FALSE(exists(work / "pwned"));
}

TEST_F(EmbedActionsTest, AnOpenDialogIsReusedEvenForASingleItem) {
    std::string report = work.write("report.pdf");
    sync.embedFolderWinCtl = std::make_shared<PXEmbedFolderWinCtl>(); // from an earlier run
    ui->answer("embed 0 Chosen");
    ASSERT_TRUE(embed({report}));
    ASSERT_EQ(ui->embeds().size(), 1u);
    EXPECT_TRUE(exists(work / "Chosen/report.pdf"));
    EXPECT_FALSE(exists(work / "report"));
    EXPECT_EQ(sync.embedFolderWinCtl, nullptr);
}

TEST_F(EmbedActionsTest, AFolderThatCannotBeMadeLeavesTheItemsWithoutAnAlert) {
    std::string a = work.write("a", "a"), b = work.write("b", "b");
    ui->answer("embed 0 " + std::string(256, 'n')); // longer than a name may be
    ASSERT_TRUE(embed({a, b}));
    EXPECT_EQ(filehash::folderEntries(work.path()).size(), 2u);
    EXPECT_EQ(readFile(a), "a");
    EXPECT_TRUE(ui->alerts().empty());

    // The item's own folder went away (dispatch would stop at its access check first).
    std::string lost = work.write("lost/c");
    select({lost}, work / "lost");
    std::filesystem::remove_all(work / "lost");
    sync.embedFolder();
    EXPECT_FALSE(exists(work / "lost"));
    EXPECT_TRUE(ui->alerts().empty());
}

TEST(PXEmbedFolderWinCtlTest, TheHandlerGetsOneAnswerPerOpening) {
    PXEmbedFolderWinCtl dialog;
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
