// pxmenu run on the "Encrypted Compression" entry with scripted answers.
#include "CliFixture.h"

using namespace px::test;

namespace {

class CompressCliTest : public CliFixture {
  protected:
    void SetUp() override { setUpMenus(); }
    ProcessResult compress(const Strings& paths, const std::string& answers) {
        return runEntry({"Encrypted Compression"}, request(0, work.path(), paths), answers);
    }

    TempDir out;
};

TEST_F(CompressCliTest, PacksWithThePasswordAndReportsProgress) {
    const std::string a = work.write("a.txt", "alpha");
    work.write("F/b.txt", "beta");
    ProcessResult result =
        compress({a, work / "F"}, "save " + out / "both.zip" + " password open sesame\n");
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    auto lines = transcript(result.out);
    ASSERT_GE(lines.size(), 2u) << result.out;
    EXPECT_EQ(lines.front().at("prompt"), "save");
    EXPECT_EQ(lines.front().at("directory"), work.path());
    EXPECT_EQ(lines.back(), nlohmann::json({{"progress", 1.0}}));
    EXPECT_TRUE(withKey(result.out, "informative").empty()) << result.out;

    const std::string zip = runProcess({"7zz", "i"}).exitStatus == 0 ? "7zz" : "7z";
    if (runProcess({zip, "i"}).exitStatus != 0) GTEST_SKIP() << "7-Zip is not installed";
    TempDir wrong, right;
    const std::string archive = out / "both.zip";
    EXPECT_NE(runProcess({zip, "x", "-y", "-pclosed", "-o" + wrong.path(), archive}).exitStatus, 0);
    ProcessResult extracted =
        runProcess({zip, "x", "-y", "-popen sesame", "-o" + right.path(), archive});
    ASSERT_EQ(extracted.exitStatus, 0) << extracted.out;
    EXPECT_EQ(readFile(right / "a.txt"), "alpha");
    EXPECT_EQ(readFile(right / "F/b.txt"), "beta");
}

} // namespace
