#include "actions/PXEditNameWinCtl.h"

#include "config/Localization.h"
#include "platform/Platform.h"
#include "platform/fake/FakeUi.h"

#include <gtest/gtest.h>

namespace px {
namespace {

class EditNameTest : public ::testing::Test {
  protected:
    void SetUp() override {
        platform::Platform installed;
        installed.ui = ui;
        platform::install(std::move(installed));
        window.editHandler = [this](const std::string& text) { edited.push_back(text); };
        window.cancelHandler = [this] { ++cancels; };
    }
    void TearDown() override { platform::install({}); }

    std::shared_ptr<platform::FakeUi> ui = std::make_shared<platform::FakeUi>();
    PXEditNameWinCtl window;
    std::vector<std::string> edited;
    int cancels = 0;
};

TEST_F(EditNameTest, DefaultsAndFieldText) {
    EXPECT_EQ(window.tipLabelString, localized("Please enter a display name"));
    EXPECT_EQ(window.tipPlaceholder, localized("Without Display Name Tip"));
    EXPECT_FALSE(window.required);

    window.defaultAlias = "Projects";
    ui->answer("text Work");
    window.showWindow();
    ASSERT_EQ(ui->names().size(), 1u);
    const auto& shown = ui->names().front();
    EXPECT_EQ(shown.tip, localized("Please enter a display name"));
    EXPECT_EQ(shown.placeholder, localized("Without Display Name Tip"));
    EXPECT_EQ(shown.defaultText, "Projects");
    EXPECT_EQ(edited, std::vector<std::string>{"Work"});
}

TEST_F(EditNameTest, UnusableDefaultLeavesTheFieldEmpty) {
    window.defaultAlias = "(null)";
    ui->answer("text x");
    window.showWindow();
    EXPECT_EQ(ui->names().front().defaultText, "");
}

TEST_F(EditNameTest, RequiredNameLeftBlankIsAskedAgain) {
    window.required = true;
    ui->answers({"text", "text   ", "text (null)", "text  Final "});
    window.showWindow();
    EXPECT_EQ(ui->names().size(), 4u);
    EXPECT_EQ(edited, std::vector<std::string>{" Final "}); // as typed, not trimmed
    EXPECT_EQ(cancels, 0);
}

TEST_F(EditNameTest, RequiredNameThenCancel) {
    window.required = true;
    ui->answers({"text", "cancel"});
    window.showWindow();
    EXPECT_TRUE(edited.empty());
    EXPECT_EQ(cancels, 1);
}

TEST_F(EditNameTest, OptionalNameMayBeEmpty) {
    ui->answer("text");
    window.showWindow();
    EXPECT_EQ(edited, std::vector<std::string>{""});
    EXPECT_EQ(ui->names().size(), 1u);
}

TEST_F(EditNameTest, ScriptRunningOutCancels) {
    window.required = true;
    ui->answer("text ");
    window.showWindow(); // the fake's exit returns, so the second prompt is cancelled
    EXPECT_EQ(ui->unansweredPrompts(), 1);
    EXPECT_EQ(cancels, 1);
}

TEST_F(EditNameTest, MissingHandlersAreFine) {
    PXEditNameWinCtl bare;
    ui->answers({"text a", "cancel"});
    bare.showWindow();
    bare.showWindow();
    EXPECT_EQ(ui->names().size(), 2u);
}

} // namespace
} // namespace px
