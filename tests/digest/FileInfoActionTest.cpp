#include "ActionFixture.h"
#include "config/Localization.h"
#include "media/Digest.h"

namespace px::test {
namespace {

class FileInfoActionTest : public ActionFixture {
  protected:
    PXMenuItem::Ptr child(const std::string& key, std::int64_t tag) {
        auto item = std::make_shared<PXMenuItem>();
        item->key = key;
        item->tag = tag;
        return item;
    }
    static std::string tool(const std::string& program, const std::string& path) {
        auto result = runProcess({program, "--", path});
        return result.out.substr(0, result.out.find(' '));
    }
};

TEST_F(FileInfoActionTest, ShowsTheChosenDigestAndCopiesItOnCopy) {
    std::string path = work.write("report.txt", "quarterly numbers\n");
    select({path});
    ui->answer("button 1000");
    sync->copyfileInfo(child("SHA256", 2));
    ASSERT_EQ(ui->alerts().size(), 1u);
    const auto& alert = ui->alerts().front();
    EXPECT_EQ(alert.message, "SHA256");
    EXPECT_EQ(alert.informative, tool("sha256sum", path));
    EXPECT_EQ(alert.buttons, (std::vector<std::string>{localized("Copy"), localized("Cancel")}));
    EXPECT_EQ(pasteboard->writes(), std::vector<std::string>{tool("sha256sum", path)});
}

TEST_F(FileInfoActionTest, CancelLeavesTheClipboardAlone) {
    select({work.write("a.bin", "a")});
    ui->answer("button 1001");
    sync->copyfileInfo(child("MD5", 0));
    EXPECT_EQ(ui->alerts().at(0).informative, "0cc175b9c0f1b6a831c399e269772661");
    EXPECT_TRUE(pasteboard->writes().empty());
    EXPECT_EQ(pasteboard->clearCount(), 0u);
}

TEST_F(FileInfoActionTest, OnlyTheFirstSelectedFileIsDigested) {
    std::string first = work.write("one", "1"), second = work.write("two", "2");
    select({first, second});
    ui->answers({"button 1000"});
    sync->copyfileInfo(child("SHA1", 1));
    ASSERT_EQ(ui->alerts().size(), 1u);
    EXPECT_EQ(ui->alerts()[0].informative, tool("sha1sum", first));
    EXPECT_EQ(ui->remainingAnswers(), 0u);
}

TEST_F(FileInfoActionTest, TagsAboveThreeFallBackToSha512) {
    std::string path = work.write("x", "x");
    select({path});
    ui->answer("button 1001");
    sync->copyfileInfo(child("SHA512", 9));
    EXPECT_EQ(ui->alerts().at(0).informative, tool("sha512sum", path));
}

TEST_F(FileInfoActionTest, FolderShowsNoDialog) {
    select({work.mkdir("photos")});
    sync->copyfileInfo(child("MD5", 0));
    EXPECT_TRUE(ui->alerts().empty());
    EXPECT_EQ(ui->unansweredPrompts(), 0);
}

TEST_F(FileInfoActionTest, VanishedFileShowsAnEmptyDigestAndCopyCopiesNothing) {
    pasteboard->setString("kept");
    select({work / "vanished.iso"});
    ui->answer("button 1000");
    sync->copyfileInfo(child("SHA256", 2));
    ASSERT_EQ(ui->alerts().size(), 1u);
    EXPECT_EQ(ui->alerts()[0].message, "SHA256");
    EXPECT_EQ(ui->alerts()[0].informative, "");
    EXPECT_EQ(pasteboard->string(), "kept");
    EXPECT_EQ(pasteboard->writes().size(), 1u);
}

} // namespace
} // namespace px::test
