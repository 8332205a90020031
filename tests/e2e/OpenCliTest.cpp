#include "CliFixture.h"
#include "config/Localization.h"
#include "openwith/RecordingProgram.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <set>
#include <sys/stat.h>

using namespace px::test;
using ProgramRun = RecordingProgram::Run;
using Strings = std::vector<std::string>;

namespace {

// Drives the open, terminal, copy-path and script entries through the pxmenu binary, with
// desktop entries and terminals that only record how they were started.
class OpenCliTest : public CliFixture {
  protected:
    void SetUp() override {
        ASSERT_EQ(pxmenu({"setup"}).exitStatus, 0);
        ASSERT_EQ(pxmenu({"config", "set", "pref", "is reviewed", "true"}).exitStatus, 0);
        place = work.mkdir("place");
        bin = work.mkdir("bin");
    }

    // A desktop entry, in the user's applications folder or the system's, whose program records
    // how it was started; the program is named `tag`.
    void installApplication(const std::string& id, const std::string& name, const std::string& tag,
                            bool forUser = true) {
        RecordingProgram program(bin + "/" + tag, record);
        std::string folder = (forUser ? xdg.dataHome() : systemData) + "/applications";
        std::filesystem::create_directories(folder);
        std::ofstream(folder + "/" + id) << "[Desktop Entry]\nType=Application\nName=" << name
                                         << "\nExec=" << program.path << " %F\n";
    }
    RecordingProgram installProgram(const std::string& name) { return {bin + "/" + name, record}; }

    // The tag of an entry by its key path, in the menu for the selection.
    int tagOf(const Strings& keys, const Strings& selection, const std::string& kind = "0") {
        Strings args{"--kind", kind, "--target", place, "--"};
        args.insert(args.end(), selection.begin(), selection.end());
        nlohmann::json level = menuJson(args);
        int tag = -1;
        for (const auto& key : keys) {
            const nlohmann::json* found = entry(level, key);
            if (!found) return -1;
            tag = found->at("tag").get<int>();
            nlohmann::json children = found->value("children", nlohmann::json::array());
            level = std::move(children);
        }
        return tag;
    }

    // Runs the entry from inside the test folder, so that a command smuggled in through a name
    // would leave its files there.
    ProcessResult run(int tag, const Strings& selection, const std::string& answers = "",
                      const std::string& kind = "0") {
        std::string script = work.write("answers-" + std::to_string(++m_runs), answers);
        Strings args{"/usr/bin/env",      "-C",     place, PXMENU_BINARY, "run", "--tag",
                     std::to_string(tag), "--kind", kind,  "--target",    place, "--ui",
                     "script:" + script,  "--"};
        args.insert(args.end(), selection.begin(), selection.end());
        return runProcess(args);
    }
    std::vector<ProgramRun> runs(std::size_t expected) const {
        return RecordingProgram::recordedRuns(record, expected);
    }
    void expectNothingStray() const {
        for (const char* stray : {"pwned", "y", "x"})
            for (const auto& folder : {place, work.path(), xdg.home()})
                EXPECT_FALSE(exists(folder + "/" + stray)) << folder << "/" << stray;
    }

    std::string place, bin;
    std::string record = work / "record";
    std::string systemData = work.mkdir("system-data");
    ScopedEnv dataDirs{"XDG_DATA_DIRS", systemData};
    ScopedEnv terminal{"TERMINAL", std::nullopt};

  private:
    int m_runs = 0;
};

TEST_F(OpenCliTest, CommonApplicationsAreFoundByNameIdOrSearchAndGetEachItem) {
    installApplication("org.example.Recorder.desktop", "Recorder", "by-name");
    installApplication("myviewer.desktop", "Picture Window", "by-id", false);
    installApplication("org.example.Sound.desktop", "Sound Studio Deluxe", "by-search");
    for (const char* app : {"Recorder", "My Viewer", "Studio"})
        ASSERT_EQ(pxmenu({"config", "add", "common-app", app}).exitStatus, 0);
    std::string dollar = work.write("place/$(touch pwned)");
    std::string quoted = work.write("place/a\"; touch y; \".txt");
    std::string backquoted = work.write("place/`touch x`");

    for (const char* app : {"Recorder", "My Viewer", "Studio"}) {
        auto result = run(tagOf({"Common App", app}, {dollar, quoted}), {dollar, quoted});
        ASSERT_EQ(result.exitStatus, 0) << result.err;
        EXPECT_EQ(result.out, "") << "no prompt";
    }
    auto result = run(tagOf({"Common App", "Recorder"}, {backquoted}), {backquoted});
    ASSERT_EQ(result.exitStatus, 0) << result.err;

    auto found = runs(7);
    ASSERT_EQ(found.size(), 7u);
    std::vector<Strings> arguments;
    for (const auto& one : found)
        arguments.push_back(one.arguments);
    std::vector<Strings> expected{{quoted}, {quoted}, {quoted},    {dollar},
                                  {dollar}, {dollar}, {backquoted}};
    std::sort(arguments.begin(), arguments.end());
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(arguments, expected) << "one launch per item, each item one argument";
    std::multiset<std::string> programs;
    for (const auto& one : found)
        programs.insert(one.program);
    EXPECT_EQ(programs, (std::multiset<std::string>{"by-name", "by-name", "by-name", "by-id",
                                                    "by-id", "by-search", "by-search"}));
    expectNothingStray();
}

TEST_F(OpenCliTest, AnApplicationThatIsNotInstalledGivesTheOpenErrorAlert) {
    ASSERT_EQ(pxmenu({"config", "add", "common-app", "No Such Program"}).exitStatus, 0);
    std::string file = work.write("place/a.txt");
    auto result = run(tagOf({"Common App", "No Such Program"}, {file}), {file}, "button 1000\n");
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    auto lines = transcript(result.out);
    ASSERT_EQ(lines.size(), 1u) << result.out;
    EXPECT_EQ(lines[0].at("prompt"), "alert");
    EXPECT_EQ(lines[0].at("informative"), px::localized("Open Error Tip"));
}

TEST_F(OpenCliTest, TerminalsOpenAtTheSelectedFolderAndTheSecondTerminalFollowsItsPreference) {
    installProgram("gnome-terminal");
    installProgram("kitty");
    ScopedEnv chosen("TERMINAL", bin + "/gnome-terminal");
    ScopedEnv path("PATH", bin + ":/usr/bin:/bin");
    ASSERT_EQ(pxmenu({"config", "set", "right", "iTerm2 Tab", "disabled", "false"}).exitStatus, 0);
    ASSERT_EQ(pxmenu({"config", "set", "pref", "second terminal", "kitty"}).exitStatus, 0);
    std::string folder = work.mkdir("place/$(touch pwned) a\"; touch y; \"");

    auto window = run(tagOf({"Terminal Window"}, {folder}), {folder});
    ASSERT_EQ(window.exitStatus, 0) << window.err;
    ASSERT_EQ(runs(1).size(), 1u);
    auto tab = run(tagOf({"iTerm2 Tab"}, {folder}), {folder});
    ASSERT_EQ(tab.exitStatus, 0) << tab.err;

    auto found = runs(2);
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0].program, "gnome-terminal");
    EXPECT_EQ(found[0].folder, folder);
    EXPECT_EQ(found[0].arguments, (Strings{"--window", "--working-directory=" + folder}));
    EXPECT_EQ(found[1].program, "kitty");
    EXPECT_EQ(found[1].arguments, (Strings{"--directory", folder}));
    expectNothingStray();
}

TEST_F(OpenCliTest, ATerminalLeftOpenDoesNotHoldTheCommandBack) {
    std::string lingering = bin + "/xterm";
    std::ofstream(lingering) << "#!/bin/sh\necho started\nexec sleep 6\n";
    ::chmod(lingering.c_str(), 0755);
    ScopedEnv chosen("TERMINAL", lingering);
    ScopedEnv path("PATH", bin + ":/usr/bin:/bin");
    std::string folder = work.mkdir("place/here");
    int tag = tagOf({"Terminal Window"}, {folder});
    auto start = std::chrono::steady_clock::now();
    auto result = run(tag, {folder});
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(4))
        << "the terminal kept the command's output streams open";
    EXPECT_EQ(result.out, "");
}

TEST_F(OpenCliTest, CopyPathWritesTheSelectedPathsToTheClipboard) {
    std::string a = work.write("place/a b.txt"), b = work.write("place/$(touch pwned)");
    auto result = run(tagOf({"Copy Path"}, {a, b}), {a, b});
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    auto lines = transcript(result.out);
    ASSERT_EQ(lines.size(), 1u) << result.out;
    EXPECT_EQ(lines[0], nlohmann::json({{"clipboard", a + "\n" + b}}));
}

TEST_F(OpenCliTest, ShellScriptsRunAndScriptRunnerFilesAreRefused) {
    ASSERT_EQ(pxmenu({"config", "set", "right", "Execute Script", "disabled", "false"}).exitStatus,
              0);
    auto script = [&](const std::string& name, const std::string& marker) {
        return work.write("place/" + name, "echo noise\necho ran > '" + (work / marker) + "'\n");
    };
    Strings selection{script("RUN.SH", "upper"), script("a\"; touch y; \".sh", "quoted"),
                      script("$(touch pwned).sh", "dollar"), work.write("place/b.scpt", "beep"),
                      script("notes.txt", "text")};
    int tag = tagOf({"Execute Script"}, selection);
    ASSERT_GT(tag, 0);
    auto result = run(tag, selection, "button 1000\n");
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    for (const char* marker : {"upper", "quoted", "dollar"})
        EXPECT_TRUE(appears(work / marker)) << marker;
    EXPECT_FALSE(exists(work / "text"));
    auto lines = transcript(result.out); // the scripts' own output stays off the transcript
    ASSERT_EQ(lines.size(), 1u) << result.out;
    EXPECT_EQ(lines[0].at("informative"), px::localized("Script Runner Not Available Tip"));
    expectNothingStray();
}

} // namespace
