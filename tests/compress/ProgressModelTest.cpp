#include "actions/ProgressModel.h"

#include "platform/fake/FakeUi.h"
#include "support/Localization.h"
#include "support/Queues.h"
#include "support_files/FakeUiLog.h"

#include <gtest/gtest.h>

using namespace px;
using px::test::progressKinds;
using Kind = px::platform::FakeUi::ProgressEvent::Kind;

namespace {

class ProgressModelTest : public ::testing::Test {
  protected:
    void SetUp() override { queue::markMainThread(); }
    void TearDown() override { queue::runUntilIdle(); }

    std::shared_ptr<platform::FakeUi> ui = std::make_shared<platform::FakeUi>();
    std::shared_ptr<ProgressModel> window = std::make_shared<ProgressModel>(*ui);
};

// The window waits, then shows the percentage with one decimal and Cancel; Cancel runs the
// handler once however often it is pressed, and nothing once the model is gone.
TEST_F(ProgressModelTest, ShowsThePercentageAndCancelsOnce) {
    int cancels = 0;
    window->cancelHandler = [&] { ++cancels; };
    window->open();
    EXPECT_EQ(window->tipText(), localized("Please Wait Tip"));
    EXPECT_FALSE(window->isCancelShown());
    window->setPercent(0.4567);
    EXPECT_EQ(window->tipText(), "45.7%");
    EXPECT_TRUE(window->isCancelShown());
    ui->cancelProgress();
    EXPECT_FALSE(window->isOpen());
    ui->cancelProgress(); // the window is gone: nothing to press
    window->open();
    EXPECT_FALSE(window->isCancelShown());
    ui->cancelProgress(); // reopened: the handler was used up, the window still closes
    EXPECT_EQ(cancels, 1);
    EXPECT_EQ(progressKinds(*ui),
              (std::vector<Kind>{Kind::Open, Kind::Percent, Kind::Close, Kind::Open, Kind::Close}));
    window->open();
    window.reset();
    ui->cancelProgress();
    EXPECT_EQ(progressKinds(*ui).back(), Kind::Open);
}

} // namespace
