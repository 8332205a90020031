#include "platform/linux/ScriptedUi.h"

#include "config/Localization.h"
#include "platform/linux/TranscriptPasteboard.h"
#include "support_files/TestSupport.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sstream>

namespace px::platform {
namespace {

using json = nlohmann::json;

class ScriptedUiTest : public ::testing::Test {
  protected:
    // A Ui over the script; every exit is recorded with the transcript lines written so far.
    ScriptedUi& script(std::string_view text) {
        auto answers = parseScript(text);
        EXPECT_FALSE(answers.isError());
        m_ui =
            std::make_unique<ScriptedUi>(answers.releaseValue(), m_transcript, [this](int status) {
                exits.push_back(status);
                linesAtExit.push_back(lines().size());
            });
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

    json onlyLine() const {
        auto all = lines();
        EXPECT_EQ(all.size(), 1u) << out.str();
        return all.empty() ? json() : all.front();
    }

    std::ostringstream out;
    std::ostringstream errors;
    std::vector<int> exits;
    std::vector<std::size_t> linesAtExit;

  private:
    std::shared_ptr<Transcript> m_transcript = std::make_shared<Transcript>(out);
    std::unique_ptr<ScriptedUi> m_ui;
};

Ui::Alert deleteAlert() {
    return {"Tip", "Delete 2 items?", {localized("OK"), localized("Cancel")}};
}

TEST_F(ScriptedUiTest, AlertLineAndButtonAnswer) {
    EXPECT_EQ(script("button 1001").runAlert(deleteAlert()), 1001);
    EXPECT_EQ(onlyLine(), json({{"prompt", "alert"},
                                {"message", "Tip"},
                                {"informative", "Delete 2 items?"},
                                {"buttons", {localized("OK"), localized("Cancel")}}}));
    EXPECT_TRUE(exits.empty());
}

TEST_F(ScriptedUiTest, CancelPressesTheCancelButtonElseTheLast) {
    auto& ui = script("cancel\ncancel\ncancel");
    EXPECT_EQ(ui.runAlert({"T", "m", {localized("Cancel"), localized("OK")}}), 1000);
    EXPECT_EQ(ui.runAlert({"T", "m", {"Keep Both", "Stop", "Replace"}}), 1002);
    EXPECT_EQ(ui.runAlert({"T", "m", {}}), 1000);
    EXPECT_TRUE(exits.empty());
}

TEST_F(ScriptedUiTest, ButtonOutsideTheAlertIsAScriptError) {
    EXPECT_EQ(script("button 1002").runAlert(deleteAlert()), 1001);
    EXPECT_EQ(exits, std::vector<int>{3});
    EXPECT_NE(errors.str().find("button 1002"), std::string::npos);
    EXPECT_NE(errors.str().find("line 1"), std::string::npos);
}

TEST_F(ScriptedUiTest, RunningOutEndsTheRunAfterThePromptLine) {
    auto& ui = script("button 1000");
    EXPECT_EQ(ui.runAlert(deleteAlert()), 1000);
    EXPECT_EQ(ui.runAlert(deleteAlert()), 1001); // the hook returned: answered as cancelled
    EXPECT_EQ(exits, std::vector<int>{3});
    EXPECT_EQ(linesAtExit, std::vector<std::size_t>{2});
    EXPECT_TRUE(errors.str().empty());
}

TEST_F(ScriptedUiTest, MismatchedAnswersEndTheRun) {
    auto& ui = script("open /tmp\nbutton 1000\ntext x\nsave /a\ncolor 1 2 3\nembed 0 x");
    EXPECT_EQ(ui.runAlert(deleteAlert()), 1001);
    EXPECT_FALSE(ui.runOpenPanel({"/home", "Choose", "", false, true}));
    EXPECT_FALSE(ui.pickColor());
    EXPECT_FALSE(ui.runNameEntry({"Name", "", "", false}));
    EXPECT_FALSE(ui.runEmbedDialog({"Folder", {"All"}}));
    EXPECT_FALSE(ui.runSavePanel({"/tmp", "a.zip", "", false, {}, {}, {}}));
    EXPECT_EQ(exits, (std::vector<int>{3, 3, 3, 3, 3, 3}));
    EXPECT_NE(errors.str().find("\"open /tmp\" does not answer the alert prompt"),
              std::string::npos)
        << errors.str();
    EXPECT_NE(errors.str().find("\"embed 0 x\" does not answer the save prompt"),
              std::string::npos);
}

TEST_F(ScriptedUiTest, SaveLineAndRelativePath) {
    auto& ui = script("save x.zip\nsave /abs/y.zip password s3cret");
    Ui::SaveRequest request{"/home/u/Docs", "Archive.zip", "", false, {}, {}, {}};
    auto first = ui.runSavePanel(request);
    ASSERT_TRUE(first);
    EXPECT_EQ(first->path, "/home/u/Docs/x.zip");
    EXPECT_EQ(first->password, "");

    request.passwordAccessory = true;
    auto second = ui.runSavePanel(request);
    ASSERT_TRUE(second);
    EXPECT_EQ(second->path, "/abs/y.zip");
    EXPECT_EQ(second->password, "s3cret");
    EXPECT_EQ(lines().at(0),
              json({{"prompt", "save"}, {"name", "Archive.zip"}, {"directory", "/home/u/Docs"}}));
}

TEST_F(ScriptedUiTest, PasswordForAPanelWithoutOneIsAnError) {
    EXPECT_FALSE(
        script("save /a.zip password x").runSavePanel({"/tmp", "a.zip", "", false, {}, {}, {}}));
    EXPECT_EQ(exits, std::vector<int>{3});
    EXPECT_NE(errors.str().find("no password field"), std::string::npos);
}

class FileTypeChooserScript : public ScriptedUiTest {
  protected:
    Ui::SaveRequest chooserRequest() {
        Ui::SaveRequest request{"/tmp", "Untitled", "", false, {}, {}, {}};
        for (const char* key : {"special", "txt", "New File From Window", "md"})
            request.fileTypes.push_back(PXMenuItem::create(key));
        request.offeredTypeIndexes = {1, 3};
        request.onTypeChosen = [this](const PXMenuItem::Ptr& item) {
            chosen.push_back(item ? item->key : "(none)");
        };
        return request;
    }
    std::vector<std::string> chosen;
};

TEST_F(FileTypeChooserScript, FirstOfferedEntryIsReportedAtOnce) {
    EXPECT_TRUE(script("save /tmp/a.txt").runSavePanel(chooserRequest()));
    EXPECT_EQ(chosen, std::vector<std::string>{"txt"});
}

TEST_F(FileTypeChooserScript, ChooseBeforeOrAfterTheSaveLine) {
    auto& ui = script("choose 3\nsave /tmp/a.md\nsave /tmp/b.md\nchoose 3\nbutton 1000");
    EXPECT_EQ(ui.runSavePanel(chooserRequest())->path, "/tmp/a.md");
    EXPECT_EQ(ui.runSavePanel(chooserRequest())->path, "/tmp/b.md");
    EXPECT_EQ(chosen, (std::vector<std::string>{"txt", "md", "txt", "md"}));
    EXPECT_EQ(ui.remaining(), 1u); // the button line is left for the next prompt
    EXPECT_TRUE(exits.empty());
}

TEST_F(FileTypeChooserScript, ChoosingAnEntryNotOfferedIsAnError) {
    EXPECT_FALSE(script("choose 2\nsave /tmp/a").runSavePanel(chooserRequest()));
    EXPECT_EQ(exits, std::vector<int>{3});
    EXPECT_NE(errors.str().find("offers 1, 3"), std::string::npos) << errors.str();
}

TEST_F(FileTypeChooserScript, ChooseWithoutAChooserDoesNotFit) {
    EXPECT_FALSE(script("choose 1\nsave /tmp/a").runSavePanel({"/", "a", "", false, {}, {}, {}}));
    EXPECT_EQ(exits, std::vector<int>{3});
}

TEST_F(ScriptedUiTest, OpenLineAndAnswer) {
    auto path =
        script("open sub dir").runOpenPanel({"/home/u", "Authorize", "Allow access", false, true});
    EXPECT_EQ(path, "/home/u/sub dir");
    EXPECT_EQ(onlyLine(),
              json({{"prompt", "open"}, {"button", "Authorize"}, {"message", "Allow access"}}));
}

TEST_F(ScriptedUiTest, NameLineAndAnswers) {
    auto& ui = script("text  Report \ncancel");
    EXPECT_EQ(ui.runNameEntry({"Display name", "placeholder", "Old", true}), " Report ");
    EXPECT_FALSE(ui.runNameEntry({"Display name", "placeholder", "Old", true}));
    EXPECT_EQ(lines().at(0),
              json({{"prompt", "name"}, {"tip", "Display name"}, {"default", "Old"}}));
}

TEST_F(ScriptedUiTest, EmbedLineAndModeRange) {
    auto& ui = script("embed 1 Sorted\nembed 2 Nope");
    auto result = ui.runEmbedDialog({"New Folder", {"All in one", "By extension"}});
    ASSERT_TRUE(result);
    EXPECT_EQ(result->mode, 1);
    EXPECT_EQ(result->name, "Sorted");
    EXPECT_EQ(lines().at(0), json({{"prompt", "embed"},
                                   {"name", "New Folder"},
                                   {"modes", {"All in one", "By extension"}}}));
    EXPECT_FALSE(ui.runEmbedDialog({"New Folder", {"All in one", "By extension"}}));
    EXPECT_EQ(exits, std::vector<int>{3});
}

TEST_F(ScriptedUiTest, ColorLineAndComponents) {
    auto color = script("color 255 51 0").pickColor();
    ASSERT_TRUE(color);
    EXPECT_DOUBLE_EQ(color->red, 1.0);
    EXPECT_DOUBLE_EQ(color->green, 0.2);
    EXPECT_DOUBLE_EQ(color->blue, 0.0);
    EXPECT_EQ(onlyLine(), json({{"prompt", "color"}}));
}

TEST_F(ScriptedUiTest, ProgressLines) {
    auto& ui = script("");
    ui.progressOpen({});
    ui.progressSetPercent(0.45678);
    ui.progressSetPercent(0.4571); // the same to three decimals: no new line
    ui.progressSetPercent(1.5);
    ui.progressSuccess("Compression Succeeded");
    ui.progressClose();
    EXPECT_EQ(out.str(), "{\"progress\":0.457}\n{\"progress\":1.0}\n"
                         "{\"success\":\"Compression Succeeded\"}\n");
}

TEST_F(ScriptedUiTest, TextsThatAreNotUtf8AreStillWritten) {
    script("text x").runNameEntry({"Name", "", std::string("bad\xff name"), false});
    EXPECT_EQ(onlyLine()["default"], "bad\xEF\xBF\xBD name");
}

TEST(ScriptedUiLoad, ReadsTheScriptFileOrReportsIt) {
    test::TempDir dir;
    std::ostringstream out;
    auto transcript = std::make_shared<Transcript>(out);
    auto ui = ScriptedUi::load(dir.write("answers", "# one\r\nbutton 1001\r\n"), transcript);
    ASSERT_FALSE(ui.isError()) << ui.error().message;
    EXPECT_EQ(ui.value()->remaining(), 1u);
    EXPECT_EQ(ui.value()->runAlert({"T", "m", {"A", "B"}}), 1001);

    auto broken = ScriptedUi::load(dir.write("broken", "button 1000\nsave\n"), transcript);
    ASSERT_TRUE(broken.isError());
    EXPECT_NE(broken.error().message.find("line 2"), std::string::npos);
}

TEST(TranscriptPasteboard, ScriptModeWritesClipboardLines) {
    std::ostringstream out;
    TranscriptPasteboard board(std::make_shared<Transcript>(out));
    EXPECT_FALSE(board.string());
    board.setString("/tmp/a \"b\"\n/tmp/c");
    EXPECT_EQ(out.str(), "{\"clipboard\":\"/tmp/a \\\"b\\\"\\n/tmp/c\"}\n");
    EXPECT_EQ(board.string(), "/tmp/a \"b\"\n/tmp/c");
    board.clearContents();
    EXPECT_FALSE(board.string());
}

TEST(TranscriptPasteboard, TerminalModePrintsTheText) {
    std::ostringstream out;
    TranscriptPasteboard board(out);
    board.setString("#1A2B3C");
    EXPECT_EQ(out.str(), "#1A2B3C\n");
    EXPECT_EQ(board.string(), "#1A2B3C");
}

} // namespace
} // namespace px::platform
