#include "ActionFixture.h"
#include "media/Digest.h"
#include "support/Localization.h"

namespace px::test {
namespace {

class FileInfoActionTest : public ActionFixture {
  protected:
    // Runs the digest child at `tag` for the selection, queueing `answer` (when given) for the
    // dialog.
    void digest(std::vector<std::string> selection, const std::string& key, std::int64_t tag,
                const std::string& answer) {
        select(std::move(selection));
        if (!answer.empty()) ui->answer(answer);
        commands::copyFileInfo(sync.cx(), *PXMenuItem::create(key), static_cast<std::size_t>(tag));
    }
    static std::string tool(const std::string& program, const std::string& path) {
        auto result = runProcess({program, "--", path});
        return result.out.substr(0, result.out.find(' '));
    }
};

TEST_F(FileInfoActionTest, OnlyTheFirstFileIsDigestedAndTagsAboveThreeMeanSha512) {
    std::string first = work.write("one", "1"), second = work.write("two", "2");
    digest({first, second}, "SHA512", 9, "button 1000");
    ASSERT_EQ(ui->alerts().size(), 1u);
    EXPECT_EQ(ui->alerts()[0].message, "SHA512");
    EXPECT_EQ(ui->alerts()[0].informative, tool("sha512sum", first));
    EXPECT_EQ(pasteboard->writes(), std::vector<std::string>{tool("sha512sum", first)});
}

TEST_F(FileInfoActionTest, CancelLeavesTheClipboardAlone) {
    digest({work.write("a.bin", "a")}, "MD5", 0, "button 1001");
    EXPECT_EQ(ui->alerts().at(0).informative, "0cc175b9c0f1b6a831c399e269772661");
    EXPECT_TRUE(pasteboard->writes().empty());
    EXPECT_EQ(pasteboard->clearCount(), 0u);
}

TEST_F(FileInfoActionTest, AFolderShowsNoDialogAndAVanishedFileAnEmptyDigest) {
    digest({work.mkdir("photos")}, "MD5", 0, "button 1000");
    EXPECT_TRUE(ui->alerts().empty());
    EXPECT_EQ(ui->remainingAnswers(), 1u);

    pasteboard->setString("kept"); // the answer left over presses Copy
    digest({work / "vanished.iso"}, "SHA256", 2, "");
    ASSERT_EQ(ui->alerts().size(), 1u);
    EXPECT_EQ(ui->alerts()[0].message, "SHA256");
    EXPECT_EQ(ui->alerts()[0].informative, "");
    EXPECT_EQ(pasteboard->string(), "kept");
    EXPECT_EQ(pasteboard->writes().size(), 1u);
}

} // namespace
} // namespace px::test
