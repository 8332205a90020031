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

TEST_F(CopyMoveActionTest, MoveAsksOncePerCollisionFollowsEachAnswerAndLosesNothing) {
    for (const char* name : {"a.txt", "b.txt", "c.txt"})
        work.write(std::string("dest/") + name, std::string("old ") + name);
    ui->answers({"button 1000", "button 1001", "button 1002"}); // Keep Both, Stop, Replace
    sendTo(sources, destination, false);

    EXPECT_EQ(alertTexts(*ui), collisionTips({"a.txt", "b.txt", "c.txt"}));
    EXPECT_EQ(ui->alerts()[0].buttons,
              (std::vector<std::string>{localized("Keep Both"), localized("Stop"),
                                        localized("Replace")}));
    EXPECT_EQ(readFile(destination + "/a.txt"), "old a.txt");
    EXPECT_EQ(readFile(destination + "/a-1.txt"), "new a.txt");
    EXPECT_EQ(readFile(destination + "/b.txt"), "old b.txt");
    EXPECT_EQ(readFile(destination + "/c.txt"), "new c.txt");
    EXPECT_EQ(readFile(destination + "/d.txt"), "new d.txt");
    EXPECT_THAT(listing(work / "src"), ElementsAre("b.txt"));
    EXPECT_EQ(count(Kind::Success), 1);
    EXPECT_EQ(ui->progress().back().kind, Kind::Close);
    EXPECT_EQ(sync.cx().loadingCount, 0);
}

TEST_F(CopyMoveActionTest, IntoTheFolderThatHoldsItKeepBothCopiesAndReplaceKeepsTheSource) {
    ui->answers({"button 1000", "button 1002"});
    sendTo({sources[0]}, work / "src", true);
    EXPECT_EQ(readFile(work / "src/a-1.txt"), "new a.txt");
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
    EXPECT_EQ(ui->opens().at(1).button, localized("Move"));
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

} // namespace
