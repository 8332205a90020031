#include "platform/linux/TerminalServices.h"

#include "platform/MemorySettings.h"
#include "support_files/RecordingProgram.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <unistd.h>

using namespace px;
using namespace px::test;
using platform::TerminalServices;
using Strings = std::vector<std::string>;

namespace {

// A PATH holding only stand-in emulators that record how they were started.
class TerminalServicesTest : public ::testing::Test {
  protected:
    void install(const std::string& name) { RecordingProgram(bin + "/" + name, record); }
    std::vector<RecordingProgram::Run> runs(std::size_t expected) {
        auto found = RecordingProgram::recordedRuns(record, expected);
        std::sort(found.begin(), found.end(),
                  [](auto& a, auto& b) { return a.program + a.folder < b.program + b.folder; });
        return found;
    }
    static TerminalServices preferring(std::optional<std::string> second) {
        return TerminalServices([second] { return second; });
    }

    TempDir work;
    std::string bin = work.mkdir("bin"), record = work / "record";
    ScopedEnv path{"PATH", bin};
    ScopedEnv terminal{"TERMINAL", std::nullopt};
};

TEST_F(TerminalServicesTest, TheAlternativesLinkIsFollowedToTheEmulatorBehindIt) {
    install("xfce4-terminal");
    std::string wrapper = work.write("alternatives/xfce4-terminal.wrapper", "#!/bin/sh\n");
    ::chmod(wrapper.c_str(), 0755);
    ASSERT_EQ(::symlink(wrapper.c_str(), (bin + "/x-terminal-emulator").c_str()), 0);
    install("gnome-terminal"); // earlier in the table, but the alternatives link wins
    std::string folder = work.mkdir("tabs");
    ASSERT_TRUE(preferring({}).performService("New Terminal Tab at Folder", {folder}));
    auto found = runs(1);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].program, "xfce4-terminal");
    EXPECT_EQ(found[0].arguments, (Strings{"--tab", "--working-directory", folder}));
}

TEST_F(TerminalServicesTest, WithoutChoicesTheFirstKnownEmulatorOpensEachItemsFolder) {
    install("xterm");
    install("foot");
    std::string folder = work.mkdir("$(touch pwned)");
    std::string file = work.write("a\"; touch y; \".txt");
    ASSERT_TRUE(preferring({}).performService("New Terminal at Folder", {folder, file}));
    auto found = runs(2);
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0].program, "foot");
    EXPECT_EQ(found[0].folder, work.path()) << "a file opens at its folder";
    EXPECT_EQ(found[1].folder, folder);
    EXPECT_EQ(found[1].arguments, Strings{"--working-directory=" + folder});
    EXPECT_FALSE(exists(work / "pwned") || exists(work / "y"));
}

TEST_F(TerminalServicesTest, TheSecondTerminalIsThePreferenceElseAnotherInstalledOne) {
    install("gnome-terminal");
    install("konsole");
    install("xterm");
    std::string folder = work.mkdir("second");
    ASSERT_TRUE(preferring("xterm").performService("New iTerm2 Window Here", {folder}));
    ASSERT_TRUE(preferring({}).performService("New iTerm2 Tab Here", {folder}));
    auto found = runs(2);
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0].program, "konsole") << "the first installed after the default";
    EXPECT_EQ(found[0].arguments, (Strings{"--new-tab", "--workdir", folder}));
    EXPECT_EQ(found[1].program, "xterm");
    EXPECT_EQ(found[1].folder, folder) << "xterm opens where it is started";
    EXPECT_TRUE(found[1].arguments.empty());
}

TEST_F(TerminalServicesTest, MissingTerminalsAndUnknownServicesDoNothing) {
    install("konsole");
    std::string folder = work.mkdir("f");
    EXPECT_FALSE(preferring("alacritty").performService("New iTerm2 Window Here", {folder}));
    auto alone = preferring({});
    EXPECT_FALSE(alone.performService("New iTerm2 Window Here", {folder})) << "only one emulator";
    EXPECT_FALSE(alone.performService("Make Coffee", {folder}));
    EXPECT_FALSE(alone.performService("New Terminal at Folder", {work / "gone/deeper"}));
    EXPECT_FALSE(alone.performService("New Terminal at Folder", {}));
    ScopedEnv nothing("PATH", work.mkdir("empty"));
    EXPECT_FALSE(alone.performService("New Terminal at Folder", {folder}));
    usleep(200 * 1000);
    EXPECT_TRUE(runs(0).empty());
}

} // namespace

namespace {

TEST_F(TerminalServicesTest, TheTerminalPreferenceWinsAndTheChoicesAreTheInstalledEmulators) {
    auto suite = std::make_shared<platform::MemorySettings>();
    TerminalServices services(nullptr, TerminalServices::preferenceIn(suite, "terminal"));
    install("konsole");
    install("xterm");
    ScopedEnv chosen("TERMINAL", "konsole");
    EXPECT_EQ(TerminalServices::installedEmulators(), (Strings{"konsole", "xterm"}));

    suite->setString("terminal", "xterm");
    EXPECT_EQ(services.defaultTerminal()->emulator, "xterm");
    suite->setString("terminal", "not-installed");
    EXPECT_EQ(services.defaultTerminal()->emulator, "konsole") << "then $TERMINAL";
}

} // namespace
