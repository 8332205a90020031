// The open, terminal, copy-path and script entries through the pxmenu binary, with desktop
// entries and terminals that only record how they were started.
#include "CliFixture.h"
#include "support/Localization.h"
#include "support_files/RecordingProgram.h"

#include <chrono>
#include <sys/stat.h>

using namespace px::test;

namespace {

class OpenCliTest : public CliFixture {
  protected:
    void SetUp() override {
        setUpMenus({"iTerm2 Tab", "Execute Script"});
        runFolder = place; // a command smuggled in through a name would leave its files here
    }
    // A desktop entry, in the user's applications folder or the system's, whose program (named
    // `program`) records how it was started.
    void installApplication(const std::string& id, const std::string& name,
                            const std::string& program, bool forUser = true) {
        RecordingProgram recorder(bin + "/" + program, record);
        std::string folder = (forUser ? xdg.dataHome() : systemData) + "/applications";
        std::filesystem::create_directories(folder);
        std::ofstream(folder + "/" + id) << "[Desktop Entry]\nType=Application\nName=" << name
                                         << "\nExec=" << recorder.path << " %F\n";
    }
    ProcessResult open(const Strings& keyPath, const Strings& selection,
                       const std::string& answers = "") {
        return runEntry(keyPath, request(0, place, selection), answers);
    }
    std::vector<RecordingProgram::Run> runs(std::size_t expected) const {
        return RecordingProgram::recordedRuns(record, expected);
    }
    void expectNothingStray() const {
        for (const char* stray : {"pwned", "y", "x"})
            for (const auto& folder : {place, work.path(), xdg.home()})
                EXPECT_FALSE(exists(folder + "/" + stray)) << folder << "/" << stray;
    }

    std::string place = work.mkdir("place"), bin = work.mkdir("bin");
    std::string record = work / "record";
    std::string systemData = work.mkdir("system-data");
    ScopedEnv dataDirs{"XDG_DATA_DIRS", systemData};
    ScopedEnv terminal{"TERMINAL", std::nullopt};
    ScopedEnv path{"PATH", bin + ":/usr/bin:/bin"};
};

TEST_F(OpenCliTest, CommonApplicationsAreFoundByNameIdOrSearchAndGetEachItem) {
    installApplication("org.example.Recorder.desktop", "Recorder", "by-name");
    installApplication("myviewer.desktop", "Picture Window", "by-id", false);
    installApplication("org.example.Sound.desktop", "Sound Studio Deluxe", "by-search");
    const Strings selection{work.write("place/$(touch pwned)"),
                            work.write("place/a\"; touch y; \".txt"),
                            work.write("place/`touch x`")};
    std::vector<Strings> expected;
    for (const char* app : {"Recorder", "My Viewer", "Studio"}) {
        ASSERT_EQ(pxmenu({"config", "add", "common-app", app}).exitStatus, 0);
        auto result = open({"Common App", app}, selection);
        ASSERT_EQ(result.exitStatus, 0) << result.err;
        EXPECT_EQ(result.out, "") << "no prompt";
    }
    for (const char* program : {"by-id", "by-name", "by-search"})
        for (const auto& item : selection)
            expected.push_back({program, item});
    std::vector<Strings> found; // one launch per item, each item one argument
    for (const auto& run : runs(9)) {
        found.push_back({run.program});
        found.back().insert(found.back().end(), run.arguments.begin(), run.arguments.end());
    }
    std::sort(found.begin(), found.end());
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(found, expected);
    expectNothingStray();
}

TEST_F(OpenCliTest, TerminalsOpenAtTheSelectedFolderAndTheSecondTerminalFollowsItsPreference) {
    RecordingProgram(bin + "/gnome-terminal", record);
    RecordingProgram(bin + "/kitty", record);
    ScopedEnv chosen("TERMINAL", bin + "/gnome-terminal");
    ASSERT_EQ(pxmenu({"config", "set", "pref", "second terminal", "kitty"}).exitStatus, 0);
    std::string folder = work.mkdir("place/$(touch pwned) a\"; touch y; \"");

    ASSERT_EQ(open({"Terminal Window"}, {folder}).exitStatus, 0);
    ASSERT_EQ(runs(1).size(), 1u);
    ASSERT_EQ(open({"iTerm2 Tab"}, {folder}).exitStatus, 0);
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
    std::string folder = work.mkdir("place/here");
    int tag = tagAt({"Terminal Window"}, request(0, place, {folder}));
    auto start = std::chrono::steady_clock::now();
    auto result = runTag(tag, request(0, place, {folder}));
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(4))
        << "the terminal kept the command's output streams open";
    EXPECT_EQ(result.out, "");
}

TEST_F(OpenCliTest, CopyPathWritesTheSelectedPathsToTheClipboard) {
    std::string a = work.write("place/a b.txt"), b = work.write("place/$(touch pwned)");
    auto result = open({"Copy Path"}, {a, b});
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    EXPECT_EQ(transcript(result.out), std::vector{nlohmann::json({{"clipboard", a + "\n" + b}})});
}

TEST_F(OpenCliTest, ShellScriptsRunAndScriptRunnerFilesAreRefused) {
    auto script = [&](const std::string& name, const std::string& marker) {
        return work.write("place/" + name, "echo noise\necho ran > '" + (work / marker) + "'\n");
    };
    Strings selection{script("RUN.SH", "upper"),
                      script("a\"; touch y; \".sh", "quoted"),
                      script("$(touch pwned).sh", "dollar"),
                      script("`touch x`.Sh", "backquote"),
                      work.write("place/b.scpt", "beep"),
                      script("notes.txt", "text")};
    auto result = open({"Execute Script"}, selection, "button 1000\n");
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    for (const char* marker : {"upper", "quoted", "dollar", "backquote"})
        EXPECT_TRUE(appears(work / marker)) << marker;
    EXPECT_FALSE(exists(work / "text"));
    auto lines = transcript(result.out); // the scripts' own output stays off the transcript
    ASSERT_EQ(lines.size(), 1u) << result.out;
    EXPECT_EQ(lines[0].at("informative"), px::localized("Script Runner Not Available Tip"));
    expectNothingStray();
}

} // namespace
