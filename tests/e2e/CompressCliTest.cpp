// pxmenu run on the "Encrypted Compression" entry with scripted answers.
#include "CliFixture.h"

#include <algorithm>
#include <sys/stat.h>

using namespace px::test;

namespace {

class CompressCliTest : public CliFixture {
  protected:
    void SetUp() override { ASSERT_EQ(pxmenu({"setup"}).exitStatus, 0); }

    std::int64_t compressTag(const std::vector<std::string>& paths) {
        std::vector<std::string> args{"--target", work.path(), "--"};
        args.insert(args.end(), paths.begin(), paths.end());
        const nlohmann::json menu = menuJson(args);
        const auto* compress = entry(menu, "Encrypted Compression");
        return compress ? compress->at("tag").get<std::int64_t>() : -1;
    }
    ProcessResult run(const std::vector<std::string>& paths, const std::string& script) {
        const std::string scriptFile = answers.write("script.txt", script);
        std::vector<std::string> args{"run",
                                      "--tag",
                                      std::to_string(compressTag(paths)),
                                      "--target",
                                      work.path(),
                                      "--ui",
                                      "script:" + scriptFile,
                                      "--"};
        args.insert(args.end(), paths.begin(), paths.end());
        return pxmenu(args);
    }
    static std::string sevenZip() {
        for (const char* name : {"7zz", "7z"})
            if (runProcess({name, "i"}).exitStatus == 0) return name;
        return {};
    }

    TempDir answers, out;
};

TEST_F(CompressCliTest, PacksWithThePasswordAndReportsProgress) {
    const std::string a = work.write("a.txt", "alpha"), b = work.write("F/b.txt", "beta");
    ProcessResult result =
        run({a, work / "F"}, "save " + out / "both.zip" + " password open sesame\n");
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    auto lines = transcript(result.out);
    ASSERT_GE(lines.size(), 2u) << result.out;
    EXPECT_EQ(lines.front().at("prompt"), "save");
    EXPECT_EQ(lines.front().at("directory"), work.path());
    EXPECT_FALSE(lines.front().at("name").get<std::string>().empty());
    EXPECT_EQ(lines.back(), nlohmann::json({{"progress", 1.0}}));
    for (const auto& line : lines)
        EXPECT_FALSE(line.contains("prompt") && line.at("prompt") == "alert") << line;

    const std::string zip = sevenZip();
    if (zip.empty()) GTEST_SKIP() << "7-Zip is not installed";
    TempDir wrong, right;
    EXPECT_NE(
        runProcess({zip, "x", "-y", "-pclosed", "-o" + wrong.path(), out / "both.zip"}).exitStatus,
        0);
    ProcessResult extracted =
        runProcess({zip, "x", "-y", "-popen sesame", "-o" + right.path(), out / "both.zip"});
    ASSERT_EQ(extracted.exitStatus, 0) << extracted.out;
    EXPECT_EQ(readFile(right / "a.txt"), "alpha");
    EXPECT_EQ(readFile(right / "F/b.txt"), "beta");
}

TEST_F(CompressCliTest, AFailedJobAlertsAndLeavesNoArchive) {
    const std::string a = work.write("a.txt", "alpha");
    ASSERT_EQ(::mkfifo((work / "pipe").c_str(), 0644), 0);
    ProcessResult result =
        run({a, work / "pipe"}, "save " + out / "x.zip" + " password pw\nbutton 1000\n");
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    auto lines = transcript(result.out);
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines.back().at("prompt"), "alert");
    EXPECT_EQ(lines.back().at("informative"), "Compression Failed");
    EXPECT_NE(result.err.find(work / "pipe"), std::string::npos) << result.err;
    EXPECT_FALSE(exists(out / "x.zip"));
}

TEST_F(CompressCliTest, NoAnswerForThePanelEndsWithStatusThree) {
    const std::string a = work.write("a.txt", "alpha");
    ProcessResult result = run({a}, "# nothing\n");
    EXPECT_EQ(result.exitStatus, 3);
    EXPECT_FALSE(exists(out / "a.zip"));
}

} // namespace
