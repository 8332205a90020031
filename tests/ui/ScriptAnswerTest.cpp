#include "platform/linux/ScriptAnswer.h"

#include <gtest/gtest.h>

namespace px::platform {
namespace {

using Kind = ScriptAnswer::Kind;

ScriptAnswer parsed(std::string_view line) {
    auto answer = parseScriptLine(line, 1);
    EXPECT_FALSE(answer.isError()) << answer.error().message;
    return answer.isError() ? ScriptAnswer{} : answer.releaseValue();
}

TEST(ScriptAnswer, ReadsEveryForm) {
    EXPECT_EQ(parsed("button 1001").number, 1001);
    EXPECT_EQ(parsed("choose 3").kind, Kind::Choose);
    EXPECT_EQ(parsed("choose 3").number, 3);
    EXPECT_EQ(parsed("open /tmp/a b").text, "/tmp/a b");
    EXPECT_EQ(parsed("text  two spaces ").text, " two spaces ");
    EXPECT_EQ(parsed("text").text, "");
    EXPECT_EQ(parsed("cancel").kind, Kind::Cancel);

    const auto embed = parsed("embed 1 My Folder");
    EXPECT_EQ(embed.kind, Kind::Embed);
    EXPECT_EQ(embed.number, 1);
    EXPECT_EQ(embed.text, "My Folder");

    const auto color = parsed("color 255 0 16");
    EXPECT_EQ(color.color, (std::array<int, 3>{255, 0, 16}));
}

TEST(ScriptAnswer, SaveTakesAnOptionalPassword) {
    const auto plain = parsed("save /tmp/out dir/a.zip");
    EXPECT_EQ(plain.text, "/tmp/out dir/a.zip");
    EXPECT_FALSE(plain.password);

    const auto secret = parsed("save /tmp/a.zip password pa ss");
    EXPECT_EQ(secret.text, "/tmp/a.zip");
    EXPECT_EQ(secret.password, "pa ss");

    EXPECT_EQ(parsed("save /tmp/a.zip password").password, "");
}

TEST(ScriptAnswer, RejectsMalformedLines) {
    for (const char* line : {"button", "button ten", "button 10x", "choose -1", "color 1 2",
                             "color 1 2 256", "color 1 2 3 4", "embed x name", "save", "open   ",
                             "cancel now", "press 1000", "Button 1000"}) {
        auto answer = parseScriptLine(line, 7);
        ASSERT_TRUE(answer.isError()) << line;
        EXPECT_NE(answer.error().message.find("line 7"), std::string::npos) << line;
    }
}

TEST(ScriptAnswer, ScriptSkipsCommentsAndBlankLinesAndAcceptsCrlf) {
    auto script = parseScript("# answers\r\n\r\nbutton 1000\r\n   \n  # indented comment\n"
                              "text hello\r\nsave /tmp/x.txt");
    ASSERT_FALSE(script.isError()) << script.error().message;
    const auto& answers = script.value();
    ASSERT_EQ(answers.size(), 3u);
    EXPECT_EQ(answers[0].kind, Kind::Button);
    EXPECT_EQ(answers[0].line, 3);
    EXPECT_EQ(answers[1].text, "hello");
    EXPECT_EQ(answers[1].line, 6);
    EXPECT_EQ(answers[2].text, "/tmp/x.txt");
}

TEST(ScriptAnswer, ScriptReportsTheFirstBadLine) {
    auto script = parseScript("button 1000\nbutton 1001\nfrobnicate\n");
    ASSERT_TRUE(script.isError());
    EXPECT_NE(script.error().message.find("line 3"), std::string::npos);
    EXPECT_NE(script.error().message.find("frobnicate"), std::string::npos);
}

TEST(ScriptAnswer, MissingScriptFileIsAnError) {
    auto script = loadScript("/nonexistent/pxmenu/answers.txt");
    ASSERT_TRUE(script.isError());
    EXPECT_NE(script.error().message.find("/nonexistent/pxmenu/answers.txt"), std::string::npos);
}

} // namespace
} // namespace px::platform
