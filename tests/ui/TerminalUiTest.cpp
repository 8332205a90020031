#include "platform/linux/TerminalUi.h"

#include "support/Localization.h"

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
    bool shown(const std::string& text) const {
        return prompts.str().find(text) != std::string::npos;
    }

    std::ostringstream prompts;

  private:
    int m_readEnd = -1;
    std::unique_ptr<TerminalUi> m_ui;
};

const Ui::Alert kReplace{"Tip", "a.txt exists", {"Keep Both", "Stop", "Replace"}};

TEST_F(TerminalUiTest, AlertListsNumberedButtonsAsksAgainOnNonsenseAndDefaultsToTheFirst) {
    auto& ui = typed("3\n9\nabc\n\r\n");
    EXPECT_EQ(ui.runAlert(kReplace), 1002);
    EXPECT_TRUE(shown("a.txt exists"));
    EXPECT_TRUE(shown("  1) Keep Both\n  2) Stop\n  3) Replace\n"));
    EXPECT_EQ(ui.runAlert(kReplace), 1000);
    EXPECT_TRUE(shown("try again"));
}

TEST_F(TerminalUiTest, EndOfInputCancelsEveryPrompt) {
    auto& ui = typed("");
    EXPECT_EQ(ui.runAlert({"Tip", "m", {localized("OK"), localized("Cancel")}}), 1001);
    EXPECT_EQ(ui.runAlert(kReplace), 1002);
    EXPECT_FALSE(ui.runSavePanel({"/tmp", "a.zip", "", true, {}, {}, {}}));
    EXPECT_FALSE(ui.runOpenPanel({"/tmp", "Choose", "", false, true}));
    EXPECT_FALSE(ui.runEmbedDialog({"Folder", {"One", "Two"}}));
    EXPECT_FALSE(ui.pickColor());
}

TEST_F(TerminalUiTest, SaveTakesTheProposalOrAPathInThePanelFolderAndAsksForThePassword) {
    auto& ui = typed("\nsecret\nother.zip\n/abs/x.zip\n");
    auto first = ui.runSavePanel({"/home/u", "Archive.zip", "", true, {}, {}, {}});
    ASSERT_TRUE(first);
    EXPECT_EQ(first->path + " " + first->password, "/home/u/Archive.zip secret");
    EXPECT_FALSE(shown("secret")) << "never echoed by us";
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
    EXPECT_EQ(typed("2\nnotes.md\n").runSavePanel(request)->path, "/tmp/notes.md");
    EXPECT_EQ(chosen, (std::vector<std::string>{"txt", "md"}));
}

TEST_F(TerminalUiTest, OpenEmbedAndColourTakeTheirDefaultsOnAnEmptyLine) {
    auto& ui = typed("\nsub\n2\n\nred\n#FF3300\n1a2b3c\n");
    EXPECT_EQ(ui.runOpenPanel({"/srv", "Authorize", "Allow", false, true}), "/srv");
    EXPECT_EQ(ui.runOpenPanel({"/srv", "Authorize", "Allow", false, true}), "/srv/sub");
    auto embed = ui.runEmbedDialog({"New Folder", {"All", "By extension"}});
    EXPECT_EQ(std::to_string(embed->mode) + " " + embed->name, "1 New Folder");
    auto first = ui.pickColor();
    EXPECT_DOUBLE_EQ(first->green, 0.2);
    EXPECT_DOUBLE_EQ(ui.pickColor()->blue, 0x3c / 255.0);
    for (const char* bad : {"#12345", "#1234567", "+12345"})
        EXPECT_FALSE(parseHexColor(bad)) << bad;
}

TEST_F(TerminalUiTest, ProgressBarAndSuccess) {
    auto& ui = typed("");
    ui.progressOpen({});
    ui.progressSetPercent(0.457);
    ui.progressSetPercent(1.0);
    ui.progressSuccess("Compression Succeeded");
    ui.progressClose();
    EXPECT_TRUE(shown("\r[") && shown(" 45.7%"));
    EXPECT_TRUE(prompts.str().ends_with("100.0%\nCompression Succeeded\n")) << prompts.str();
}

} // namespace
} // namespace px::platform
