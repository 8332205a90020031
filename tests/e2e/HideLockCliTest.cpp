#include "CliFixture.h"

#include <sys/stat.h>

using namespace px::test;

namespace {

using Names = std::vector<std::string>;

// Visibility, lock and delete entries chosen through `pxmenu run` with scripted answers.
class HideLockCliTest : public CliFixture {
  protected:
    void SetUp() override {
        ASSERT_EQ(pxmenu({"setup"}).exitStatus, 0);
        for (const char* key : {"Delete", "Lock and Unlock", "System Hide Files"})
            ASSERT_EQ(pxmenu({"config", "set", "right", key, "disabled", "false"}).exitStatus, 0);
        ASSERT_EQ(pxmenu({"config", "set", "pref", "is reviewed", "true"}).exitStatus, 0);
    }
    // Runs the top-level entry with the key for the selection, answering from the lines.
    ProcessResult run(int kind, const std::string& target, const Names& paths,
                      const std::string& key, const std::string& answers = {}) {
        Names menuArgs{"--kind", std::to_string(kind), "--target", target, "--"};
        menuArgs.insert(menuArgs.end(), paths.begin(), paths.end());
        const nlohmann::json menu = menuJson(menuArgs);
        const auto* chosen = entry(menu, key);
        if (!chosen) return {-1, "", key + " is not offered"};
        std::string script = work.write(".script", answers);
        Names args{"run", "--tag", std::to_string(chosen->at("tag").get<int>()), "--ui",
                   "script:" + script};
        args.insert(args.end(), menuArgs.begin(), menuArgs.end());
        return pxmenu(args);
    }
    static unsigned modeOf(const std::string& path) {
        struct stat info {};
        return ::stat(path.c_str(), &info) == 0 ? (info.st_mode & 07777) : 0;
    }
};

TEST_F(HideLockCliTest, HideAndUnhideEditTheFoldersList) {
    std::string dir = work.mkdir("docs");
    std::string odd = work.write("docs/a\"; rm x $(reboot)");
    std::string plain = work.write("docs/plain.txt");
    work.write("docs/.hidden", "# by hand\n");
    auto hidden = run(0, dir, {odd, plain}, "Hide Selected Files");
    ASSERT_EQ(hidden.exitStatus, 0) << hidden.err;
    EXPECT_EQ(hidden.out, "");
    EXPECT_EQ(readFile(dir + "/.hidden"), "# by hand\na\"; rm x $(reboot)\nplain.txt\n");
    EXPECT_TRUE(exists(odd) && exists(plain));

    auto shown = run(1, dir, {}, "Unhide All Files");
    ASSERT_EQ(shown.exitStatus, 0) << shown.err;
    EXPECT_EQ(readFile(dir + "/.hidden"), "# by hand\n");

    std::string fresh = work.mkdir("fresh");
    work.write("fresh/b");
    work.write("fresh/a");
    ASSERT_EQ(run(1, fresh, {}, "Hide All Files").exitStatus, 0);
    EXPECT_EQ(readFile(fresh + "/.hidden"), "a\nb\n");
    ASSERT_EQ(run(1, fresh, {}, "Unhide All Files").exitStatus, 0);
    EXPECT_FALSE(exists(fresh + "/.hidden"));
}

TEST_F(HideLockCliTest, LockThenUnlockAMixedSelection) {
    std::string a = work.write("a", "x"), b = work.write("b", "x"), c = work.write("c", "x");
    ::chmod(a.c_str(), 0640);
    ::chmod(b.c_str(), 0444);
    ::chmod(c.c_str(), 0660);
    auto first = run(0, work.path(), {a, b, c}, "Lock and Unlock");
    ASSERT_EQ(first.exitStatus, 0) << first.err;
    EXPECT_EQ(first.out, "");
    EXPECT_EQ(modeOf(a), 0440u);
    EXPECT_EQ(modeOf(b), 0644u);
    EXPECT_EQ(modeOf(c), 0660u);
    ASSERT_EQ(run(0, work.path(), {a, c}, "Lock and Unlock").exitStatus, 0);
    EXPECT_EQ(modeOf(a), 0640u);
    EXPECT_EQ(modeOf(c), 0660u);
}

TEST_F(HideLockCliTest, DeleteAsksWhenConfiguredAndReportsEachFailure) {
    ASSERT_EQ(pxmenu({"config", "set", "pref", "pref check0", "true"}).exitStatus, 0);
    std::string a = work.write("a"), b = work.write("b");
    std::string gone = work / "never-there";
    auto kept = run(0, work.path(), {a, gone, b}, "Delete", "button 1001\n");
    ASSERT_EQ(kept.exitStatus, 0) << kept.err;
    auto lines = transcript(kept.out);
    ASSERT_EQ(lines.size(), 1u) << kept.out;
    EXPECT_EQ(lines[0].at("prompt"), "alert");
    EXPECT_EQ(lines[0].at("message"), "Warning");
    EXPECT_EQ(lines[0].at("buttons"), nlohmann::json(Names{"OK", "Cancel"}));
    EXPECT_TRUE(exists(a) && exists(b));

    auto removed = run(0, work.path(), {a, gone, b}, "Delete", "button 1000\nbutton 1000\n");
    ASSERT_EQ(removed.exitStatus, 0) << removed.err;
    lines = transcript(removed.out);
    ASSERT_EQ(lines.size(), 2u) << removed.out;
    EXPECT_EQ(
        lines[1].at("informative").get<std::string>().rfind("An item could not be deleted", 0), 0u);
    EXPECT_FALSE(exists(a));
    EXPECT_FALSE(exists(b));
}

TEST_F(HideLockCliTest, SystemHideFilesCopiesTheInstruction) {
    auto result = run(1, work.path(), {}, "System Hide Files", "button 1001\nbutton 1002\n");
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    auto lines = transcript(result.out);
    ASSERT_EQ(lines.size(), 3u) << result.out;
    EXPECT_EQ(lines[0].at("buttons").size(), 3u);
    EXPECT_EQ(lines[1].at("clipboard"),
              "gsettings set org.gtk.gtk4.Settings.FileChooser show-hidden false");
    EXPECT_EQ(lines[2].at("message"), "Hide Hidden Files");
    EXPECT_EQ(lines[2].at("buttons"),
              nlohmann::json(Names{"Paste to Terminal", "Paste to Second Terminal", "Cancel"}));

    auto cancelled = run(1, work.path(), {}, "System Hide Files", "button 1002\n");
    EXPECT_EQ(transcript(cancelled.out).size(), 1u) << cancelled.out;
}

} // namespace
