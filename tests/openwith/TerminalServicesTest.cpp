#include "platform/linux/TerminalServices.h"

#include "RecordingProgram.h"
#include "config/PXMenuManager.h"
#include "platform/fake/MemorySettings.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace px;
using namespace px::test;
using platform::TerminalServices;

namespace {

// A PATH holding only stand-in emulators that record how they were started.
class TerminalServicesTest : public ::testing::Test {
  protected:
    TerminalServicesTest() : bin(work.mkdir("bin")), record(work / "record") {}

    RecordingProgram install(const std::string& name) {
        return RecordingProgram(bin + "/" + name, record);
    }
    std::vector<RecordingProgram::Run> runs(std::size_t expected) {
        return RecordingProgram::recordedRuns(record, expected);
    }

    TempDir work;
    std::string bin;
    std::string record;
    ScopedEnv path{"PATH", bin};
    ScopedEnv terminal{"TERMINAL", std::nullopt};
};

TEST_F(TerminalServicesTest, TheTerminalVariableComesFirst) {
    install("gnome-terminal");
    install("kitty");
    ScopedEnv chosen("TERMINAL", "kitty");
    std::string folder = work.mkdir("project");
    TerminalServices services([] { return std::nullopt; });
    ASSERT_TRUE(services.performService("New Terminal at Folder", {folder}));
    auto found = runs(1);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].program, "kitty");
    EXPECT_EQ(found[0].folder, folder);
    EXPECT_EQ(found[0].arguments, (std::vector<std::string>{"--directory", folder}));
}

TEST_F(TerminalServicesTest, TheAlternativesLinkIsFollowedToTheEmulatorBehindIt) {
    install("xfce4-terminal");
    std::string wrapper = work.write("alternatives/xfce4-terminal.wrapper", "#!/bin/sh\n");
    ::chmod(wrapper.c_str(), 0755);
    ASSERT_EQ(::symlink(wrapper.c_str(), (bin + "/x-terminal-emulator").c_str()), 0);
    install("gnome-terminal"); // earlier in the table, but the alternatives link wins
    std::string folder = work.mkdir("tabs");
    TerminalServices services([] { return std::nullopt; });
    ASSERT_TRUE(services.performService("New Terminal Tab at Folder", {folder}));
    auto found = runs(1);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].program, "xfce4-terminal");
    EXPECT_EQ(found[0].arguments,
              (std::vector<std::string>{"--tab", "--working-directory", folder}));
}

TEST_F(TerminalServicesTest, WithoutChoicesTheFirstKnownEmulatorOpensEachItemsFolder) {
    install("xterm");
    install("foot");
    std::string folder = work.mkdir("$(touch pwned)");
    std::string file = work.write("a\"; touch y; \".txt");
    TerminalServices services([] { return std::nullopt; });
    ASSERT_TRUE(services.performService("New Terminal at Folder", {folder, file}));
    auto found = runs(2);
    ASSERT_EQ(found.size(), 2u);
    std::sort(found.begin(), found.end(), [](auto& a, auto& b) { return a.folder < b.folder; });
    EXPECT_EQ(found[0].program, "foot");
    EXPECT_EQ(found[0].folder, work.path()) << "a file opens at its folder";
    EXPECT_EQ(found[1].arguments, (std::vector<std::string>{"--working-directory=" + folder}));
    EXPECT_FALSE(exists(work / "pwned"));
    EXPECT_FALSE(exists(work / "y"));
}

TEST_F(TerminalServicesTest, TheSecondTerminalIsThePreferenceElseAnotherInstalledOne) {
    install("gnome-terminal");
    install("konsole");
    install("xterm");
    std::string folder = work.mkdir("second");

    TerminalServices chosen([] { return std::optional<std::string>("xterm"); });
    ASSERT_TRUE(chosen.performService("New iTerm2 Window Here", {folder}));
    TerminalServices other([] { return std::nullopt; });
    ASSERT_TRUE(other.performService("New iTerm2 Tab Here", {folder}));
    auto found = runs(2);
    ASSERT_EQ(found.size(), 2u);
    std::sort(found.begin(), found.end(), [](auto& a, auto& b) { return a.program < b.program; });
    EXPECT_EQ(found[0].program, "konsole")
        << "the first installed after the default gnome-terminal";
    EXPECT_EQ(found[0].arguments, (std::vector<std::string>{"--new-tab", "--workdir", folder}));
    EXPECT_EQ(found[1].program, "xterm");
    EXPECT_EQ(found[1].folder, folder) << "xterm opens where it is started";
    EXPECT_TRUE(found[1].arguments.empty());
}

TEST_F(TerminalServicesTest, TheSecondTerminalPreferenceIsReadFromTheSharedSuite) {
    install("gnome-terminal");
    install("kitty");
    auto suite = std::make_shared<platform::MemorySettings>();
    PXMenuManager::configure(suite, work.mkdir("data"));
    TerminalServices services;
    EXPECT_EQ(services.secondTerminal()->emulator, "kitty");
    suite->setString("second terminal", bin + "/gnome-terminal");
    EXPECT_EQ(services.secondTerminal()->emulator, "gnome-terminal");
    PXMenuManager::resetToDefaultLocations();
}

TEST_F(TerminalServicesTest, MissingTerminalsAndUnknownServicesDoNothing) {
    install("konsole");
    std::string folder = work.mkdir("f");
    TerminalServices absent([] { return std::optional<std::string>("alacritty"); });
    EXPECT_FALSE(absent.performService("New iTerm2 Window Here", {folder}));
    TerminalServices alone([] { return std::nullopt; });
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
