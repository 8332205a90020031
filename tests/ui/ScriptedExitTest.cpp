#include "platform/linux/ScriptedUi.h"
#include "support_files/TestSupport.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <unistd.h>

namespace px::platform {
namespace {

// The installed exit: the prompt line reaches standard output before the process ends with 3.
TEST(ScriptedUiDeathTest, RunningOutEndsTheProcessWithStatusThree) {
    test::TempDir dir;
    const std::string output = dir / "transcript.jsonl";
    EXPECT_EXIT(
        {
            const int fd = ::open(output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
            ::dup2(fd, STDOUT_FILENO);
            ScriptedUi ui({}, std::make_shared<Transcript>());
            ui.runAlert({"Tip", "Nothing left", {"OK"}});
            std::exit(0);
        },
        ::testing::ExitedWithCode(3), "");
    const auto text = test::readFile(output);
    ASSERT_FALSE(text.empty());
    EXPECT_EQ(text.back(), '\n');
    EXPECT_EQ(nlohmann::json::parse(text)["informative"], "Nothing left");
}

TEST(ScriptedUiDeathTest, MisfitAnswerEndsTheProcessWithAMessage) {
    auto answers = parseScript("open /tmp\n");
    ASSERT_FALSE(answers.isError());
    EXPECT_EXIT(
        {
            ScriptedUi ui(answers.releaseValue(), std::make_shared<Transcript>());
            ui.runAlert({"Tip", "x", {"OK"}});
            std::exit(0);
        },
        ::testing::ExitedWithCode(3), "does not answer the alert prompt");
}

} // namespace
} // namespace px::platform
