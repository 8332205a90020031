#include "ActionsFixture.h"
#include "RecordingProgram.h"
#include "actions/CommandRunner.h"

#include <sys/stat.h>
#include <unistd.h>

using namespace px;
using namespace px::test;

namespace {

// Runs the test in a folder of its own, where a stray `touch y` would leave its file.
class ScopedWorkingFolder {
  public:
    explicit ScopedWorkingFolder(const std::string& folder) : m_old(::get_current_dir_name()) {
        EXPECT_EQ(::chdir(folder.c_str()), 0);
    }
    ~ScopedWorkingFolder() {
        (void)!::chdir(m_old);
        std::free(m_old);
    }
    ScopedWorkingFolder(const ScopedWorkingFolder&) = delete;
    ScopedWorkingFolder& operator=(const ScopedWorkingFolder&) = delete;

  private:
    char* m_old;
};

class ScriptsTest : public ActionsFixture {
  protected:
    // A shell script that leaves a marker file named `marker` beside the test's files.
    std::string script(const std::string& name, const std::string& marker) {
        return work.write(name, "echo ran > '" + (work / marker) + "'\n");
    }
    void expectNothingStray() {
        for (const char* stray : {"pwned", "y", "x"}) {
            EXPECT_FALSE(exists(work / stray)) << stray;
            EXPECT_FALSE(exists(data / stray)) << stray;
        }
    }
    FinderSync sync;
};

TEST_F(ScriptsTest, ShellScriptsRunWhateverTheirNameAndOtherScriptsAreRefused) {
    ScopedWorkingFolder here(work.path());
    std::vector<std::string> selection{
        script("RUN.SH", "upper"),
        script("a\"; touch y; \".sh", "quoted"),
        script("$(touch pwned).sh", "dollar"),
        script("`touch x`.Sh", "backquote"),
        work.write("b.scpt", "display dialog \"hi\""),
        script("notes.txt", "text"),
    };
    ui->answer("button 1000");
    selectFor(sync, selection, work.path(), true);
    sync.executeScript();
    queue::runUntilIdle();
    for (const char* marker : {"upper", "quoted", "dollar", "backquote"})
        EXPECT_TRUE(appears(work / marker)) << marker;
    EXPECT_FALSE(exists(work / "text"));
    EXPECT_EQ(alertTexts(),
              (std::vector<std::string>{localized("Script Runner Not Available Tip")}));
    expectNothingStray();
}

TEST_F(ScriptsTest, ASelectionWithoutScriptsDoesNothing) {
    selectFor(sync, {script("notes.txt", "text"), work.mkdir("folder.sh.d"), work / "gone.scpt"},
              work.path(), true);
    sync.executeScript();
    queue::runUntilIdle();
    usleep(200 * 1000);
    EXPECT_FALSE(exists(work / "text"));
    EXPECT_TRUE(ui->alerts().empty());
}

TEST(CommandRunner, ExitStatusDecidesSuccess) {
    EXPECT_TRUE(filehash::execute("exit 0"));
    EXPECT_FALSE(filehash::execute("exit 1"));
    EXPECT_TRUE(filehash::executeArguments({"true"}));
    EXPECT_FALSE(filehash::executeArguments({"sh", "-c", "exit 3"}));
    EXPECT_FALSE(filehash::executeArguments({"/nonexistent/program"}));
    EXPECT_FALSE(filehash::executeArguments({}));
    EXPECT_FALSE(filehash::executeArguments({"sh", "-c", "kill -TERM $$"})) << "ended by a signal";
}

TEST(CommandRunner, ArgumentsReachTheProgramAsTheyAre) {
    TempDir work;
    ScopedWorkingFolder here(work.path());
    const std::vector<std::string> names{"$(touch pwned)", "a\"; touch y; \".txt", "`touch x`",
                                         "-n"};
    std::vector<std::string> argv{"touch", "--"};
    for (const auto& name : names)
        argv.push_back(name);
    ASSERT_TRUE(filehash::executeArguments(argv));
    for (const auto& name : names)
        EXPECT_TRUE(exists(work / name)) << name;
    for (const char* stray : {"pwned", "y", "x"})
        EXPECT_FALSE(exists(work / stray)) << stray;
}

TEST(CommandRunner, ShellFilesStartWithoutWaitingAndLeadingDashesAreNotOptions) {
    TempDir work;
    ScopedWorkingFolder here(work.path());
    work.write("-x.sh", "sleep 0.3; echo done > '" + (work / "slow") + "'\n");
    filehash::executeShellFile("-x.sh");
    EXPECT_FALSE(exists(work / "slow")) << "returned before the script ended";
    EXPECT_TRUE(appears(work / "slow"));
}

TEST(CommandRunner, ScriptRunnerFilesAreNotRun) {
    TempDir work;
    std::string file = work.write("b.scpt", "do shell script \"touch pwned\"");
    EXPECT_EQ(filehash::executeAppleScriptPath(file), localized("Script Runner Not Available Tip"));
    EXPECT_EQ(filehash::executeAppleScriptPath(work / "missing.scpt"), std::nullopt);
    EXPECT_EQ(filehash::executeAppleScriptSource("beep"),
              localized("Script Runner Not Available Tip"));
    EXPECT_FALSE(exists(work / "pwned"));
}

} // namespace
