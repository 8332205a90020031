// The review prompt at the third use: scripted runs show it, terminal runs never do.
#include "CliFixture.h"

using namespace px::test;

namespace {

class ReviewPromptCliTest : public CliFixture {
  protected:
    void SetUp() override {
        ASSERT_EQ(pxmenu({"setup"}).exitStatus, 0);
        file = work.write("notes.txt", "hello");
    }
    // Copy Path for the file, as the third use.
    ProcessResult thirdUse(const std::string& ui) {
        EXPECT_EQ(pxmenu({"config", "set", "pref", "use count", "2"}).exitStatus, 0);
        const Strings args = request(0, work.path(), {file});
        const int tag = tagAt({"Copy Path"}, args);
        Strings all{"run", "--tag", std::to_string(tag), "--ui", ui};
        all.insert(all.end(), args.begin(), args.end());
        return pxmenu(all);
    }
    std::string uses() { return pxmenu({"config", "show", "pref", "use count"}).out; }

    std::string file;
};

TEST_F(ReviewPromptCliTest, ScriptedRunsAnswerItAndTerminalRunsGoWithout) {
    const ProcessResult terminal = thirdUse("terminal");
    ASSERT_EQ(terminal.exitStatus, 0) << terminal.err;
    EXPECT_EQ(terminal.err, "");
    EXPECT_NE(terminal.out.find(file), std::string::npos) << terminal.out;
    EXPECT_EQ(uses(), "3\n") << "the third use, where a scripted run asks";

    const std::string answers = answerFiles.write("later", "button 1001\n");
    const ProcessResult scripted = thirdUse("script:" + answers);
    ASSERT_EQ(scripted.exitStatus, 0) << scripted.err;
    const auto alerts = withKey(scripted.out, "prompt");
    ASSERT_EQ(alerts.size(), 1u) << scripted.out;
    EXPECT_EQ(alerts[0]["buttons"], nlohmann::json({"Write a Review", "Next Time"}));
}

} // namespace
