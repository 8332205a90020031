#include "CliFixture.h"

#include <filesystem>

using namespace px::test;

namespace {

using Names = std::vector<std::string>;

// Embed and unembed chosen through `pxmenu run` with scripted answers, on real folders.
class EmbedCliTest : public CliFixture {
  protected:
    void SetUp() override {
        ASSERT_EQ(pxmenu({"setup"}).exitStatus, 0);
        for (const char* key : {"Embed in Folder", "Unembed Folder"})
            ASSERT_EQ(pxmenu({"config", "set", "right", key, "disabled", "false"}).exitStatus, 0);
        ASSERT_EQ(pxmenu({"config", "set", "pref", "is reviewed", "true"}).exitStatus, 0);
    }
    ProcessResult run(const Names& paths, const std::string& key, const std::string& answers = {}) {
        Names menuArgs{"--kind", "0", "--target", work.path(), "--"};
        menuArgs.insert(menuArgs.end(), paths.begin(), paths.end());
        const nlohmann::json menu = menuJson(menuArgs);
        const auto* chosen = entry(menu, key);
        if (!chosen) return {-1, "", key + " is not offered"};
        std::string script = scripts.write("answers", answers);
        Names args{"run", "--tag", std::to_string(chosen->at("tag").get<int>()), "--ui",
                   "script:" + script};
        args.insert(args.end(), menuArgs.begin(), menuArgs.end());
        return pxmenu(args);
    }

    TempDir scripts; // outside the folder being arranged
};

TEST_F(EmbedCliTest, SeveralItemsAreSortedByExtensionAfterTheDialog) {
    std::string a = work.write("a.JPG", "1"), b = work.write("b.jpg", "2");
    std::string c = work.write("c", "3"), odd = work.write("d \"$(touch pwned)\".Txt", "4");
    auto result = run({a, b, c, odd}, "Embed in Folder", "embed 1 Holiday 2024\n");
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    auto lines = transcript(result.out);
    ASSERT_EQ(lines.size(), 1u) << result.out;
    EXPECT_EQ(lines[0].at("prompt"), "embed");
    EXPECT_EQ(lines[0].at("name"), "Untitled");
    EXPECT_EQ(lines[0].at("modes"),
              nlohmann::json(Names{"Not classified", "Classify by file extension"}));
    EXPECT_EQ(readFile(work / "Holiday 2024/jpg/a.JPG"), "1");
    EXPECT_EQ(readFile(work / "Holiday 2024/jpg/b.jpg"), "2");
    EXPECT_EQ(readFile(work / "Holiday 2024/c"), "3");
    EXPECT_EQ(readFile(work / "Holiday 2024/txt/d \"$(touch pwned)\".Txt"), "4");
    EXPECT_FALSE(exists(work / "pwned"));
}

TEST_F(EmbedCliTest, ASingleItemNeedsNoAnswerAndTakesAFreeName) {
    work.mkdir("report");
    std::string report = work.write("report.pdf", "pdf");
    auto result = run({report}, "Embed in Folder");
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(readFile(work / "report-1/report.pdf"), "pdf");
}

TEST_F(EmbedCliTest, CancelAndRunningOutOfAnswersChangeNothing) {
    std::string a = work.write("a"), b = work.write("b");
    auto cancelled = run({a, b}, "Embed in Folder", "cancel\n");
    ASSERT_EQ(cancelled.exitStatus, 0) << cancelled.err;
    auto blankOnly = run({a, b}, "Embed in Folder", "embed 0  \n");
    EXPECT_EQ(blankOnly.exitStatus, 3) << blankOnly.err;
    EXPECT_EQ(transcript(blankOnly.out).size(), 2u) << blankOnly.out;
    EXPECT_EQ(readFile(a), "");
    EXPECT_TRUE(exists(b));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(work.path()),
                            std::filesystem::directory_iterator()),
              2);
}

TEST_F(EmbedCliTest, AVanishedItemGetsOneAlertAndTheRestMoves) {
    std::string a = work.write("a", "a"), b = work.write("b", "b");
    auto result =
        run({a, work / "never-there", b}, "Embed in Folder", "embed 0 Box\nbutton 1000\n");
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    auto lines = transcript(result.out);
    ASSERT_EQ(lines.size(), 2u) << result.out;
    EXPECT_EQ(lines[1].at("prompt"), "alert");
    EXPECT_EQ(lines[1].at("informative").get<std::string>().rfind("The operation could not", 0),
              0u);
    EXPECT_NE(result.err.find("never-there"), std::string::npos) << result.err;
    EXPECT_EQ(readFile(work / "Box/a"), "a");
    EXPECT_EQ(readFile(work / "Box/b"), "b");
}

TEST_F(EmbedCliTest, UnembedKeepsClashingNamesAndDropsHiddenEntries) {
    work.write("x.txt", "outer");
    std::string box = work.mkdir("box");
    work.write("box/x.txt", "inner");
    work.write("box/.hidden", "x.txt\n");
    auto result = run({box}, "Unembed Folder");
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(readFile(work / "x.txt"), "outer");
    EXPECT_EQ(readFile(work / "x-1.txt"), "inner");
    EXPECT_FALSE(exists(box));
    EXPECT_FALSE(exists(work / ".hidden"));
}

TEST_F(EmbedCliTest, UnembedAFolderWithOnlyHiddenEntriesShowsTheTip) {
    std::string box = work.mkdir("box");
    work.write("box/.keep", "k");
    auto result = run({box}, "Unembed Folder", "button 1000\n");
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    auto lines = transcript(result.out);
    ASSERT_EQ(lines.size(), 1u) << result.out;
    EXPECT_EQ(lines[0].at("informative").get<std::string>().rfind("The folder has no visible", 0),
              0u);
    EXPECT_EQ(readFile(box + "/.keep"), "k");
}

} // namespace
