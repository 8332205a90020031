#include "CopyMoveFixture.h"

#include <gmock/gmock.h>

using namespace px;
using namespace px::test;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

namespace {

class CopyMoveActionTest : public CopyMoveFixture {
  protected:
    void SetUp() override {
        CopyMoveFixture::SetUp();
        for (const char* name : {"a.txt", "b.txt", "c.txt", "d.txt"})
            sources.push_back(work.write(std::string("src/") + name, std::string("new ") + name));
        destination = work.mkdir("dest");
    }
    std::vector<std::string> sources;
    std::string destination;
};

TEST_F(CopyMoveActionTest, CopyAsksOncePerCollisionAndFollowsEachAnswer) {
    for (const char* name : {"a.txt", "b.txt", "c.txt"})
        work.write(std::string("dest/") + name, std::string("old ") + name);
    ui->answers({"button 1000", "button 1002", "button 1001"}); // Keep Both, Replace, Stop
    sendTo(sources, destination, true);

    EXPECT_THAT(informativeTexts(),
                ElementsAre(collisionTip("a.txt"), collisionTip("b.txt"), collisionTip("c.txt")));
    EXPECT_EQ(ui->alerts()[0].buttons,
              (std::vector<std::string>{localized("Keep Both"), localized("Stop"),
                                        localized("Replace")}));
    EXPECT_EQ(readFile(destination + "/a.txt"), "old a.txt");
    EXPECT_EQ(readFile(destination + "/a-1.txt"), "new a.txt");
    EXPECT_EQ(readFile(destination + "/b.txt"), "new b.txt");
    EXPECT_EQ(readFile(destination + "/c.txt"), "old c.txt");
    EXPECT_EQ(readFile(destination + "/d.txt"), "new d.txt");
    EXPECT_THAT(listing(destination), ElementsAre("a-1.txt", "a.txt", "b.txt", "c.txt", "d.txt"));
    for (const auto& source : sources)
        EXPECT_TRUE(exists(source));
    EXPECT_EQ(count(Kind::Success), 1);
    EXPECT_EQ(ui->progress().back().kind, Kind::Close);
    EXPECT_EQ(sync.loadingCount, 0);
}

TEST_F(CopyMoveActionTest, StopOnTheSecondOfThreeMovesTheOtherTwoThenShowsSuccessOnce) {
    work.write("dest/b.txt", "old b.txt");
    ui->answer("button 1001");
    sendTo({sources[0], sources[1], sources[2]}, destination, false);
    EXPECT_EQ(readFile(destination + "/a.txt"), "new a.txt");
    EXPECT_EQ(readFile(destination + "/b.txt"), "old b.txt");
    EXPECT_EQ(readFile(destination + "/c.txt"), "new c.txt");
    EXPECT_FALSE(exists(sources[0]));
    EXPECT_TRUE(exists(sources[1]));
    EXPECT_FALSE(exists(sources[2]));
    ASSERT_EQ(count(Kind::Success), 1);
    const auto success = std::find_if(ui->progress().begin(), ui->progress().end(),
                                      [](const auto& e) { return e.kind == Kind::Success; });
    EXPECT_EQ(success->text, localized("Success Common Tip"));
    EXPECT_EQ(ui->remainingAnswers(), 0u);
}

TEST_F(CopyMoveActionTest, IntoTheFolderThatHoldsItKeepBothCopiesAndReplaceKeepsTheSource) {
    ui->answer("button 1000");
    sendTo({sources[0]}, work / "src", true);
    EXPECT_EQ(readFile(work / "src/a-1.txt"), "new a.txt");

    ui->answer("button 1002");
    sendTo({sources[1]}, work / "src", false);
    EXPECT_EQ(readFile(sources[1]), "new b.txt");
    ASSERT_EQ(ui->alerts().size(), 3u);
    EXPECT_EQ(ui->alerts()[2].informative, localizedFormat("Replace Source Tip", "b.txt"));
    EXPECT_EQ(count(Kind::Success), 1); // only the copy ran
}

TEST_F(CopyMoveActionTest, WithoutAFolderTheUserChoosesOneAndCancellingDoesNothing) {
    ui->answer("cancel");
    sendTo({sources[0]}, "", true);
    ASSERT_EQ(ui->opens().size(), 1u);
    EXPECT_EQ(ui->opens()[0].button, localized("Copy"));
    EXPECT_TRUE(ui->progress().empty());
    EXPECT_TRUE(listing(destination).empty());

    ui->answer("open " + destination);
    sendTo({sources[0]}, "  ", false);
    ASSERT_EQ(ui->opens().size(), 2u);
    EXPECT_EQ(ui->opens()[1].button, localized("Move"));
    EXPECT_EQ(readFile(destination + "/a.txt"), "new a.txt");
    EXPECT_FALSE(exists(sources[0]));
}

TEST_F(CopyMoveActionTest, AFailedItemIsReportedWithItsReasonAndTheSuccessStateStillFollows) {
    ::unlink(sources[1].c_str()); // vanished after the menu was opened
    sendTo({sources[0], sources[1], sources[2]}, destination, true);
    ASSERT_EQ(ui->alerts().size(), 1u);
    EXPECT_THAT(ui->alerts()[0].informative, HasSubstr(localized("Error Common Tip")));
    EXPECT_THAT(ui->alerts()[0].informative, HasSubstr(sources[1]));
    EXPECT_THAT(ui->alerts()[0].informative, HasSubstr("No such file or directory"));
    EXPECT_THAT(listing(destination), ElementsAre("a.txt", "c.txt"));
    EXPECT_EQ(count(Kind::Success), 1);
}

TEST_F(CopyMoveActionTest, AFolderIsCopiedWholeAndNotIntoItself) {
    work.write("src/tree/sub/x", "x");
    ::symlink("sub/x", (work / "src/tree/link").c_str());
    const TreeState tree = snapshot(work / "src/tree");
    sendTo({work / "src/tree"}, destination, true);
    EXPECT_EQ(snapshot(destination + "/tree"), tree);

    sendTo({work / "src/tree"}, work / "src/tree/sub", false);
    ASSERT_EQ(ui->alerts().size(), 1u);
    EXPECT_THAT(ui->alerts()[0].informative, HasSubstr("into itself"));
    EXPECT_EQ(snapshot(work / "src/tree"), tree);
}

TEST_F(CopyMoveActionTest, TheSelectFolderEntryOfTheMenuAsksAndCopies) {
    prepare({sources[0]}, work.path());
    Menu menu = sync.menuForMenuKind(MenuKind::ContextualItems);
    const MenuEntry* copyTo = find(menu, "Copy to");
    ASSERT_NE(copyTo, nullptr);
    ASSERT_FALSE(copyTo->children.empty());
    ASSERT_EQ(copyTo->children.front().key, "Select Folder");
    ui->answer("open " + destination);
    sync.onMenuItemAction(copyTo->children.front().tag);
    queue::runUntilIdle();
    EXPECT_EQ(readFile(destination + "/a.txt"), "new a.txt");
    EXPECT_TRUE(exists(sources[0]));
}

} // namespace
