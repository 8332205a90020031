#include "platform/prompt/ScriptAnswer.h"

#include <gtest/gtest.h>

namespace px::platform {
namespace {

// Every form is read by the command-line runs; these are the ones whose blanks matter.
TEST(ScriptAnswer, TextsKeepTheirBlanksAndThePasswordIsSplitOff) {
    const std::vector<std::tuple<const char*, std::string, std::optional<std::string>>> cases{
        {"text  two spaces ", " two spaces ", {}},
        {"embed 1 My Folder", "My Folder", {}},
        {"save /tmp/out dir/a.zip", "/tmp/out dir/a.zip", {}},
        {"save /tmp/a.zip password pa ss", "/tmp/a.zip", "pa ss"},
        {"save /tmp/a.zip password", "/tmp/a.zip", ""}};
    for (const auto& [line, text, password] : cases) {
        auto answer = parseScriptLine(line, 1);
        ASSERT_FALSE(answer.isError()) << answer.error().message;
        EXPECT_EQ(answer.value().text, text) << line;
        EXPECT_EQ(answer.value().password, password) << line;
    }
}

TEST(ScriptAnswer, RejectsMalformedLinesNamingTheLine) {
    for (const char* line : {"button", "button ten", "button 10x", "choose -1", "color 1 2",
                             "color 1 2 256", "color 1 2 3 4", "embed x name", "save", "open   ",
                             "cancel now", "press 1000", "Button 1000"}) {
        auto answer = parseScriptLine(line, 7);
        ASSERT_TRUE(answer.isError()) << line;
        EXPECT_NE(answer.error().message.find("line 7"), std::string::npos) << line;
    }
    auto script = parseScript("button 1000\nbutton 1001\nfrobnicate\n");
    ASSERT_TRUE(script.isError());
    EXPECT_NE(script.error().message.find("line 3: \"frobnicate\""), std::string::npos)
        << script.error().message;
    auto missing = loadScript("/nonexistent/pxmenu/answers.txt");
    ASSERT_TRUE(missing.isError());
    EXPECT_NE(missing.error().message.find("/nonexistent/pxmenu/answers.txt"), std::string::npos);
}

TEST(ScriptAnswer, ScriptSkipsCommentsAndBlankLinesAndAcceptsCrlf) {
    auto script = parseScript("# answers\r\n\r\nbutton 1000\r\n   \n  # indented comment\n"
                              "text hello\r\nsave /tmp/x.txt");
    ASSERT_FALSE(script.isError()) << script.error().message;
    const auto& answers = script.value();
    ASSERT_EQ(answers.size(), 3u);
    EXPECT_EQ(answers[0].line, 3);
    EXPECT_EQ(answers[1].text, "hello");
    EXPECT_EQ(answers[1].line, 6);
    EXPECT_EQ(answers[2].text, "/tmp/x.txt");
}

} // namespace
} // namespace px::platform
