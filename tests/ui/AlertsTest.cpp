#include "actions/Alerts.h"

#include "config/Localization.h"
#include "platform/Platform.h"
#include "platform/fake/FakeUi.h"

#include <gtest/gtest.h>

namespace px {
namespace {

class AlertsTest : public ::testing::Test {
  protected:
    void SetUp() override {
        platform::Platform installed;
        installed.ui = ui;
        platform::install(std::move(installed));
    }
    void TearDown() override { platform::install({}); }

    std::shared_ptr<platform::FakeUi> ui = std::make_shared<platform::FakeUi>();
};

TEST_F(AlertsTest, MessageAlertHasTipTitleAndOneOkButton) {
    ui->answer("button 1000");
    alert::alertWithMsg("Compression Failed");
    ASSERT_EQ(ui->alerts().size(), 1u);
    const auto& shown = ui->alerts().front();
    EXPECT_EQ(shown.message, localized("Tip"));
    EXPECT_EQ(shown.informative, "Compression Failed");
    EXPECT_EQ(shown.buttons, std::vector<std::string>{localized("OK")});
}

TEST_F(AlertsTest, EmptyCustomButtonsStillShowOk) {
    ui->answer("button 1000");
    int result = 0;
    alert::alertWithMsg("m", std::vector<std::string>{}, [&](int answer) { result = answer; });
    EXPECT_EQ(result, 1000);
    EXPECT_EQ(ui->alerts().front().buttons, std::vector<std::string>{localized("OK")});
}

TEST_F(AlertsTest, CustomButtonsKeepTheirOrderAndResults) {
    ui->answers({"button 1002", "button 1000"});
    std::vector<int> results;
    const std::vector<std::string> buttons{"Keep Both", "Stop", "Replace"};
    alert::alertWithMsg("exists", buttons, [&](int answer) { results.push_back(answer); });
    alert::alertWithMsg("exists", buttons, [&](int answer) { results.push_back(answer); });
    EXPECT_EQ(results, (std::vector<int>{1002, 1000}));
    EXPECT_EQ(ui->alerts().front().buttons, buttons);
}

TEST_F(AlertsTest, PromptOffersOkThenCancel) {
    ui->answers({"button 1001", "cancel"});
    std::vector<int> results;
    alert::alertPrompWithMsg("Delete?", [&](int answer) { results.push_back(answer); });
    alert::alertPrompWithMsg("Delete?", [&](int answer) { results.push_back(answer); });
    EXPECT_EQ(ui->alerts().front().buttons,
              (std::vector<std::string>{localized("OK"), localized("Cancel")}));
    EXPECT_EQ(results, (std::vector<int>{1001, 1001}));
}

TEST_F(AlertsTest, HandlerFormWithoutButtonsReportsOk) {
    ui->answer("cancel");
    int result = 0;
    alert::alertWithMsg("m", [&](int answer) { result = answer; });
    EXPECT_EQ(result, 1000);
    EXPECT_EQ(ui->unansweredPrompts(), 0);
}

} // namespace
} // namespace px
