#include "platform/linux/TerminalUi.h"

#include "config/Localization.h"

#include <gtest/gtest.h>
#include <sstream>
#include <unistd.h>

namespace px::platform {
namespace {

// A terminal whose typed input is a pipe holding `input`, closed after it (end of input).
class TerminalUiTest : public ::testing::Test {
  protected:
    TerminalUi& typed(const std::string& input) {
        int fds[2];
        EXPECT_EQ(::pipe(fds), 0);
        EXPECT_EQ(::write(fds[1], input.data(), input.size()), static_cast<ssize_t>(input.size()));
        ::close(fds[1]);
        m_readEnd = fds[0];
        m_ui = std::make_unique<TerminalUi>(m_readEnd, prompts);
        return *m_ui;
    }
    void TearDown() override {
        if (m_readEnd >= 0) ::close(m_readEnd);
    }

    std::ostringstream prompts;

  private:
    int m_readEnd = -1;
    std::unique_ptr<TerminalUi> m_ui;
};

const Ui::Alert kReplace{"Tip", "a.txt exists", {"Keep Both", "Stop", "Replace"}};

TEST_F(TerminalUiTest, AlertListsNumberedButtons) {
    EXPECT_EQ(typed("3\n").runAlert(kReplace), 1002);
    EXPECT_NE(prompts.str().find("a.txt exists"), std::string::npos);
    EXPECT_NE(prompts.str().find("  1) Keep Both\n  2) Stop\n  3) Replace\n"), std::string::npos);
}

TEST_F(TerminalUiTest, AlertDefaultsToTheFirstButtonAndAsksAgainOnNonsense) {
    auto& ui = typed("9\nabc\n\r\n");
    EXPECT_EQ(ui.runAlert(kReplace), 1000);
    EXPECT_NE(prompts.str().find("try again"), std::string::npos);
}

TEST_F(TerminalUiTest, EndOfInputCancels) {
    auto& ui = typed("");
    EXPECT_EQ(ui.runAlert({"Tip", "m", {localized("OK"), localized("Cancel")}}), 1001);
    EXPECT_EQ(ui.runAlert(kReplace), 1002);
    EXPECT_FALSE(ui.runSavePanel({"/tmp", "a.zip", "", true, {}, {}, {}}));
    EXPECT_FALSE(ui.runOpenPanel({"/tmp", "Choose", "", false, true}));
    EXPECT_FALSE(ui.runNameEntry({"Name", "", "x", false}));
    EXPECT_FALSE(ui.runEmbedDialog({"Folder", {"One", "Two"}}));
    EXPECT_FALSE(ui.pickColor());
}

TEST_F(TerminalUiTest, SaveUsesTheProposalOnEmptyInputAndAsksForThePassword) {
    auto result =
        typed("\nsecret\n").runSavePanel({"/home/u", "Archive.zip", "", true, {}, {}, {}});
    ASSERT_TRUE(result);
    EXPECT_EQ(result->path, "/home/u/Archive.zip");
    EXPECT_EQ(result->password, "secret");
    EXPECT_EQ(prompts.str().find("secret"), std::string::npos); // never echoed by us
}

TEST_F(TerminalUiTest, SaveTakesRelativePathsInThePanelFolder) {
    auto& ui = typed("other.zip\n/abs/x.zip\n");
    EXPECT_EQ(ui.runSavePanel({"/home/u", "a.zip", "", false, {}, {}, {}})->path,
              "/home/u/other.zip");
    EXPECT_EQ(ui.runSavePanel({"/home/u", "a.zip", "", false, {}, {}, {}})->path, "/abs/x.zip");
}

TEST_F(TerminalUiTest, SavePanelFileTypeChoice) {
    Ui::SaveRequest request{"/tmp", "Untitled", "", false, {}, {1, 3}, {}};
    for (const char* key : {"special", "txt", "New File From Window", "md"})
        request.fileTypes.push_back(PXMenuItem::create(key));
    std::vector<std::string> chosen;
    request.onTypeChosen = [&](const PXMenuItem::Ptr& item) { chosen.push_back(item->key); };
    auto result = typed("2\nnotes.md\n").runSavePanel(request);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->path, "/tmp/notes.md");
    EXPECT_EQ(chosen, (std::vector<std::string>{"txt", "md"}));
}

TEST_F(TerminalUiTest, OpenNameEmbed) {
    auto& ui = typed("\nsub\n\nRenamed\n2\n\n");
    EXPECT_EQ(ui.runOpenPanel({"/srv", "Authorize", "Allow", false, true}), "/srv");
    EXPECT_EQ(ui.runOpenPanel({"/srv", "Authorize", "Allow", false, true}), "/srv/sub");
    EXPECT_EQ(ui.runNameEntry({"Name", "", "Old", false}), "Old");
    EXPECT_EQ(ui.runNameEntry({"Name", "", "Old", false}), "Renamed");
    auto embed = ui.runEmbedDialog({"New Folder", {"All", "By extension"}});
    ASSERT_TRUE(embed);
    EXPECT_EQ(embed->mode, 1);
    EXPECT_EQ(embed->name, "New Folder");
}

TEST_F(TerminalUiTest, ColourInHex) {
    auto& ui = typed("red\n#FF3300\n1a2b3c\n");
    auto first = ui.pickColor();
    ASSERT_TRUE(first);
    EXPECT_DOUBLE_EQ(first->red, 1.0);
    EXPECT_DOUBLE_EQ(first->green, 0.2);
    auto second = ui.pickColor();
    ASSERT_TRUE(second);
    EXPECT_DOUBLE_EQ(second->blue, 0x3c / 255.0);
    EXPECT_FALSE(parseHexColor("#12345"));
    EXPECT_FALSE(parseHexColor("#1234567"));
    EXPECT_FALSE(parseHexColor("+12345"));
}

TEST_F(TerminalUiTest, ProgressBarAndSuccess) {
    auto& ui = typed("");
    ui.progressOpen({});
    ui.progressSetPercent(0.457);
    ui.progressSetPercent(1.0);
    ui.progressSuccess("Compression Succeeded");
    ui.progressClose();
    const std::string shown = prompts.str();
    EXPECT_NE(shown.find("\r["), std::string::npos);
    EXPECT_NE(shown.find(" 45.7%"), std::string::npos);
    EXPECT_NE(shown.find("100.0%\nCompression Succeeded\n"), std::string::npos) << shown;
    EXPECT_TRUE(shown.ends_with("Compression Succeeded\n"));
}

} // namespace
} // namespace px::platform
