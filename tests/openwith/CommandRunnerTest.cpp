#include "actions/CommandRunner.h"

#include "support_files/RecordingProgram.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <unistd.h>

using namespace px;
using namespace px::test;

namespace {

TEST(CommandRunner, ShellFilesStartWithoutWaitingAndALeadingDashIsNoOption) {
    TempDir work;
    const std::string here = std::filesystem::current_path();
    ASSERT_EQ(::chdir(work.path().c_str()), 0);
    work.write("-x.sh", "sleep 0.3; echo done > '" + (work / "slow") + "'\n");
    filehash::executeShellFile("-x.sh");
    EXPECT_FALSE(exists(work / "slow")) << "returned before the script ended";
    EXPECT_TRUE(appears(work / "slow"));
    ASSERT_EQ(::chdir(here.c_str()), 0);
}

} // namespace
