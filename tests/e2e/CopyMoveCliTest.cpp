#include "CliFixture.h"

#include <algorithm>
#include <filesystem>
#include <unistd.h>

using namespace px::test;

namespace {

using Names = std::vector<std::string>;

// "Copy to", "Move to" and "Cut Paste" chosen through `pxmenu run` with scripted answers.
class CopyMoveCliTest : public CliFixture {
  protected:
    void SetUp() override {
        ASSERT_EQ(pxmenu({"setup"}).exitStatus, 0);
        ASSERT_EQ(pxmenu({"config", "set", "pref", "is reviewed", "true"}).exitStatus, 0);
        src = work.mkdir("src");
        dest = work.mkdir("dest");
    }
    static Names request(int kind, const std::string& target, const Names& paths) {
        Names args{"--kind", std::to_string(kind), "--target", target, "--"};
        args.insert(args.end(), paths.begin(), paths.end());
        return args;
    }
    // The tag of the entry with `key`, or of its child `childKey`; -1 when not offered.
    int tagOf(const Names& args, const std::string& key, const std::string& childKey = {}) {
        const nlohmann::json menu = menuJson(args);
        const auto* found = entry(menu, key);
        if (found && !childKey.empty()) found = entry(found->at("children"), childKey);
        return found ? found->at("tag").get<int>() : -1;
    }
    ProcessResult run(int tag, const Names& args, const std::string& answers) {
        const std::string script = work.write("script-" + std::to_string(++runs), answers);
        Names all{"run", "--tag", std::to_string(tag), "--ui", "script:" + script};
        all.insert(all.end(), args.begin(), args.end());
        return pxmenu(all);
    }
    // "Copy to" or "Move to" of the items, the folder chosen in the open panel.
    ProcessResult sendTo(const std::string& key, const Names& items, const std::string& answers) {
        const Names args = request(0, src, items);
        const int tag = tagOf(args, key, "Select Folder");
        if (tag < 0) return {-1, "", key + " > Select Folder is not offered"};
        return run(tag, args, "open " + dest + "\n" + answers);
    }
    static Names names(const std::string& folder) {
        Names result;
        for (const auto& item : std::filesystem::directory_iterator(folder))
            result.push_back(item.path().filename().string());
        std::sort(result.begin(), result.end());
        return result;
    }
    static std::vector<nlohmann::json> withKey(const std::vector<nlohmann::json>& lines,
                                               const std::string& key) {
        std::vector<nlohmann::json> found;
        for (const auto& line : lines)
            if (line.contains(key)) found.push_back(line);
        return found;
    }

    std::string src, dest;
    int runs = 0;
};

TEST_F(CopyMoveCliTest, CopyToAChosenFolderWithCollisionsAnsweredEachWay) {
    const Names items{work.write("src/a.txt", "new a"), work.write("src/b.txt", "new b"),
                      work.write("src/c.txt", "new c")};
    for (const char* name : {"a.txt", "b.txt", "c.txt"})
        work.write(std::string("dest/") + name, "old");
    auto result = sendTo("Copy to", items, "button 1000\nbutton 1002\nbutton 1001\n");
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    const auto lines = transcript(result.out);
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines.front().at("prompt"), "open");
    EXPECT_EQ(lines.front().at("button"), "Copy");
    EXPECT_EQ(withKey(lines, "prompt").size(), 4u);
    ASSERT_EQ(withKey(lines, "success").size(), 1u);
    EXPECT_EQ(withKey(lines, "success")[0].at("success"), "Done");
    EXPECT_EQ(names(dest), (Names{"a-1.txt", "a.txt", "b.txt", "c.txt"}));
    EXPECT_EQ(readFile(dest + "/a-1.txt"), "new a");
    EXPECT_EQ(readFile(dest + "/b.txt"), "new b");
    EXPECT_EQ(readFile(dest + "/c.txt"), "old");
    EXPECT_EQ(names(src), (Names{"a.txt", "b.txt", "c.txt"}));
}

TEST_F(CopyMoveCliTest, MoveToWithStopOnTheSecondOfThree) {
    const Names items{work.write("src/1", "1"), work.write("src/2", "2"), work.write("src/3", "3")};
    work.write("dest/2", "old 2");
    auto result = sendTo("Move to", items, "button 1001\n");
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    EXPECT_EQ(names(dest), (Names{"1", "2", "3"}));
    EXPECT_EQ(readFile(dest + "/2"), "old 2");
    EXPECT_EQ(names(src), Names{"2"});
    EXPECT_EQ(withKey(transcript(result.out), "success").size(), 1u);
}

TEST_F(CopyMoveCliTest, ReplacingTheSourceItselfKeepsItAndSaysSo) {
    const std::string a = work.write("src/a", "mine");
    const Names args = request(0, src, {a});
    const int tag = tagOf(args, "Copy to", "Select Folder");
    ASSERT_GT(tag, 0);
    auto result = run(tag, args, "open " + src + "\nbutton 1002\nbutton 1000\n");
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    EXPECT_EQ(readFile(a), "mine");
    EXPECT_EQ(names(src), Names{"a"});
    const auto alerts = withKey(transcript(result.out), "informative");
    ASSERT_EQ(alerts.size(), 2u);
    EXPECT_NE(alerts[1].at("informative").get<std::string>().find("“a” was not replaced"),
              std::string::npos);
}

TEST_F(CopyMoveCliTest, CutAndPasteAcrossRunsWithAnItemDeletedMeanwhile) {
    const std::string kept = work.write("src/kept", "k");
    const std::string gone = work.write("src/gone \"$(reboot)\"", "g");
    const Names onItems = request(0, src, {kept, gone});
    auto cut = run(tagOf(onItems, "Cut Paste"), onItems, "");
    ASSERT_EQ(cut.exitStatus, 0) << cut.err;
    EXPECT_EQ(tagOf(request(1, src, {}), "Cut Paste"), -1); // not back into the same folder
    ::unlink(gone.c_str());

    const Names onDest = request(1, dest, {});
    auto paste = run(tagOf(onDest, "Cut Paste"), onDest, "button 1000\n");
    ASSERT_EQ(paste.exitStatus, 0) << paste.err;
    EXPECT_EQ(names(dest), Names{"kept"});
    EXPECT_TRUE(names(src).empty());
    const auto alerts = withKey(transcript(paste.out), "informative");
    ASSERT_EQ(alerts.size(), 1u);
    EXPECT_NE(alerts[0].at("informative").get<std::string>().find("No such file or directory"),
              std::string::npos);
    EXPECT_EQ(tagOf(onDest, "Cut Paste"), -1); // the list is empty again
}

} // namespace
