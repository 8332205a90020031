// Visibility, lock and delete entries chosen through `pxmenu run` with scripted answers.
#include "CliFixture.h"

#include <sys/stat.h>

using namespace px::test;

namespace {

class HideLockCliTest : public CliFixture {
  protected:
    void SetUp() override { setUpMenus({"Delete", "Lock and Unlock"}); }
};

TEST_F(HideLockCliTest, HideAndUnhideEditTheFoldersList) {
    std::string dir = work.mkdir("docs");
    std::string odd = work.write("docs/a\"; rm x $(reboot)");
    std::string plain = work.write("docs/plain.txt");
    work.write("docs/.hidden", "# by hand\n");
    auto hidden = runEntry({"Hide Selected Files"}, request(0, dir, {odd, plain}));
    ASSERT_EQ(hidden.exitStatus, 0) << hidden.err;
    EXPECT_EQ(hidden.out, "");
    EXPECT_EQ(readFile(dir + "/.hidden"), "# by hand\na\"; rm x $(reboot)\nplain.txt\n");
    EXPECT_TRUE(exists(odd) && exists(plain));
    ASSERT_EQ(runEntry({"Unhide All Files"}, request(1, dir)).exitStatus, 0);
    EXPECT_EQ(readFile(dir + "/.hidden"), "# by hand\n");
}

// A host passes the keys of the entry it showed; when the configuration changed in between and
// another entry now has the tag, nothing happens and the status says so.
TEST_F(HideLockCliTest, AnEntryThatChangedSinceTheMenuWasShownDoesNothing) {
    std::string dir = work.mkdir("docs");
    std::string file = work.write("docs/plain.txt");
    const Strings args = request(0, dir, {file});
    const int tag = tagAt({"Hide Selected Files"}, args);
    ASSERT_GT(tag, 0);
    Strings stale = args;
    stale.insert(stale.begin(), {"--key", "Delete"});
    auto refused = runTag(tag, stale);
    EXPECT_EQ(refused.exitStatus, 5) << refused.err;
    EXPECT_NE(refused.err.find("changed"), std::string::npos) << refused.err;
    EXPECT_FALSE(exists(dir + "/.hidden"));
    Strings current = args;
    current.insert(current.begin(), {"--key", "Hide Selected Files"});
    auto ran = runTag(tag, current);
    ASSERT_EQ(ran.exitStatus, 0) << ran.err;
    EXPECT_EQ(readFile(dir + "/.hidden"), "plain.txt\n");
}

TEST_F(HideLockCliTest, LockThenUnlockAMixedSelection) {
    std::string a = work.write("a", "x"), b = work.write("b", "x"), c = work.write("c", "x");
    ::chmod(a.c_str(), 0640);
    ::chmod(b.c_str(), 0444);
    ::chmod(c.c_str(), 0660);
    auto first = runEntry({"Lock and Unlock"}, request(0, work.path(), {a, b, c}));
    ASSERT_EQ(first.exitStatus, 0) << first.err;
    EXPECT_EQ(first.out, "");
    // The first item decides: it was unlocked, so it locks; the locked one after it unlocks.
    EXPECT_EQ(modeOf(a), 0440u);
    EXPECT_EQ(modeOf(b), 0644u);
    EXPECT_EQ(modeOf(c), 0660u);
    ASSERT_EQ(runEntry({"Lock and Unlock"}, request(0, work.path(), {a, c})).exitStatus, 0);
    EXPECT_EQ(modeOf(a), 0640u);
    EXPECT_EQ(modeOf(c), 0660u);
}

TEST_F(HideLockCliTest, DeleteAsksWhenConfiguredAndReportsEachFailure) {
    ASSERT_EQ(pxmenu({"config", "set", "pref", "pref check0", "true"}).exitStatus, 0);
    const Strings args =
        request(0, work.path(), {work.write("a"), work / "never-there", work.write("b")});
    auto kept = runEntry({"Delete"}, args, "button 1001\n");
    ASSERT_EQ(kept.exitStatus, 0) << kept.err;
    auto lines = transcript(kept.out);
    ASSERT_EQ(lines.size(), 1u) << kept.out;
    EXPECT_EQ(lines[0].at("message"), "Warning");
    EXPECT_EQ(lines[0].at("buttons"), nlohmann::json(Strings{"OK", "Cancel"}));
    EXPECT_EQ(listing(work.path()), (Strings{"a", "b"}));

    auto removed = runEntry({"Delete"}, args, "button 1000\nbutton 1000\n");
    ASSERT_EQ(removed.exitStatus, 0) << removed.err;
    lines = transcript(removed.out);
    ASSERT_EQ(lines.size(), 2u) << removed.out;
    EXPECT_EQ(
        lines[1].at("informative").get<std::string>().rfind("An item could not be deleted", 0), 0u);
    EXPECT_TRUE(listing(work.path()).empty());
}

} // namespace
