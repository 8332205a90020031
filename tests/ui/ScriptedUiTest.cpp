#include "platform/linux/ScriptedUi.h"

#include "platform/linux/TranscriptPasteboard.h"
#include "support/Localization.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sstream>

namespace px::platform {
namespace {

using json = nlohmann::json;

class ScriptedUiTest : public ::testing::Test {
  protected:
    // A Ui over the script; every exit code is recorded.
    ScriptedUi& script(std::string_view text) {
        auto answers = parseScript(text);
        EXPECT_FALSE(answers.isError());
        m_ui = std::make_unique<ScriptedUi>(answers.releaseValue(), m_transcript,
                                            [this](int code) { exits.push_back(code); });
        m_ui->setErrorStream(errors);
        return *m_ui;
    }
    std::vector<json> lines() const {
        std::vector<json> result;
        std::istringstream in(out.str());
        for (std::string line; std::getline(in, line);)
            result.push_back(json::parse(line));
        return result;
    }
    bool reported(const std::string& text) const {
        return errors.str().find(text) != std::string::npos;
    }

    std::ostringstream out, errors;
    std::vector<int> exits;

  private:
    std::shared_ptr<Transcript> m_transcript = std::make_shared<Transcript>(out);
    std::unique_ptr<ScriptedUi> m_ui;
};

const Ui::Alert kDelete{"Tip", "Delete 2 items?", {localized("OK"), localized("Cancel")}};

TEST_F(ScriptedUiTest, AlertsWriteTheirLineAndCancelPressesTheCancelButtonElseTheLast) {
    auto& ui = script("button 1001\ncancel\ncancel\ncancel");
    EXPECT_EQ(ui.runAlert(kDelete), 1001);
    EXPECT_EQ(ui.runAlert({"T", "m", {localized("Cancel"), localized("OK")}}), 1000);
    EXPECT_EQ(ui.runAlert({"T", "m", {"Keep Both", "Stop", "Replace"}}), 1002);
    EXPECT_EQ(ui.runAlert({"T", "m", {}}), 1000);
    EXPECT_TRUE(exits.empty());
}

TEST_F(ScriptedUiTest, AnswersThatDoNotFitTheirPromptEndTheRunWithAMessage) {
    auto& ui = script("button 1002\nopen /tmp\nbutton 1000\ntext x\ncolor 1 2 3\n"
                      "embed 0 x\nembed 2 Nope\nsave /a.zip password x");
    EXPECT_EQ(ui.runAlert(kDelete), 1001);
    EXPECT_EQ(ui.runAlert(kDelete), 1001);
    EXPECT_FALSE(ui.runOpenPanel({"/home", "Choose", "", false, true}));
    EXPECT_FALSE(ui.pickColor());
    EXPECT_FALSE(ui.runEmbedDialog({"Folder", {"All"}}));
    EXPECT_FALSE(ui.runSavePanel({"/tmp", "a.zip", "", false, {}, {}, {}}));
    EXPECT_FALSE(ui.runEmbedDialog({"New Folder", {"All in one", "By extension"}}));
    EXPECT_FALSE(ui.runSavePanel({"/tmp", "a.zip", "", false, {}, {}, {}}));
    EXPECT_EQ(exits, std::vector<int>(8, 3));
    EXPECT_TRUE(reported("line 1") && reported("button 1002"));
    EXPECT_TRUE(reported("\"open /tmp\" does not answer the alert prompt")) << errors.str();
    EXPECT_TRUE(reported("\"embed 0 x\" does not answer the save prompt"));
    EXPECT_TRUE(reported("no password field"));
}

TEST_F(ScriptedUiTest, PanelsTakePathsRelativeToTheirFolderAndWriteTheirLines) {
    auto& ui = script("save x.zip\nsave /abs/y.zip password s3cret\nopen sub dir");
    Ui::SaveRequest request{"/home/u/Docs", "Archive.zip", "", false, {}, {}, {}};
    EXPECT_EQ(ui.runSavePanel(request)->path, "/home/u/Docs/x.zip");
    request.passwordAccessory = true;
    auto secret = ui.runSavePanel(request);
    EXPECT_EQ(secret->path + " " + secret->password, "/abs/y.zip s3cret");
    EXPECT_EQ(ui.runOpenPanel({"/home/u", "Authorize", "Allow access", false, true}),
              "/home/u/sub dir");
    const std::vector<json> expected{
        {{"prompt", "save"}, {"name", "Archive.zip"}, {"directory", "/home/u/Docs"}},
        {{"prompt", "save"}, {"name", "Archive.zip"}, {"directory", "/home/u/Docs"}},
        {{"prompt", "open"}, {"button", "Authorize"}, {"message", "Allow access"}}};
    EXPECT_EQ(lines(), expected);
}

TEST_F(ScriptedUiTest, ProgressLinesAndTextsThatAreNotUtf8) {
    auto& ui = script("cancel");
    ui.progressOpen({});
    ui.progressSetPercent(0.45678);
    ui.progressSetPercent(0.4571); // the same to three decimals: no new line
    ui.progressSetPercent(1.5);
    ui.progressSuccess("Compression Succeeded");
    ui.progressClose();
    ui.runAlert({"Tip", std::string("bad\xff name"), {}});
    EXPECT_TRUE(out.str().starts_with("{\"progress\":0.457}\n{\"progress\":1.0}\n"
                                      "{\"success\":\"Compression Succeeded\"}\n"));
    EXPECT_EQ(lines().back()["informative"], "bad\xEF\xBF\xBD name");
}

// Script mode's clipboard lines are checked by the command-line runs.
TEST(TranscriptPasteboard, TerminalModePrintsTheText) {
    std::ostringstream out;
    TranscriptPasteboard board(out);
    board.setString("#1A2B3C");
    EXPECT_EQ(out.str(), "#1A2B3C\n");
    EXPECT_EQ(board.string(), "#1A2B3C");
}

} // namespace
} // namespace px::platform
