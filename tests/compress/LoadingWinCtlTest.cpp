#include "archive/PXLoadingWinCtl.h"
#include "config/Localization.h"
#include "platform/Platform.h"
#include "platform/fake/FakeUi.h"
#include "support/Queues.h"

#include <chrono>
#include <gtest/gtest.h>

using namespace px;
using Kind = px::platform::FakeUi::ProgressEvent::Kind;

namespace {

class LoadingWinCtlTest : public ::testing::Test {
  protected:
    void SetUp() override {
        platform::install({ui, nullptr, nullptr, nullptr, nullptr});
        queue::markMainThread();
    }
    void TearDown() override {
        queue::runUntilIdle();
        platform::install({});
    }
    std::vector<Kind> kinds() const {
        std::vector<Kind> result;
        for (const auto& event : ui->progress())
            result.push_back(event.kind);
        return result;
    }

    std::shared_ptr<platform::FakeUi> ui = std::make_shared<platform::FakeUi>();
    std::shared_ptr<PXLoadingWinCtl> window = std::make_shared<PXLoadingWinCtl>();
};

TEST_F(LoadingWinCtlTest, WaitsThenShowsThePercentageWithOneDecimalAndCancel) {
    window->open();
    EXPECT_TRUE(window->isOpen());
    EXPECT_EQ(window->tipText(), localized("Please Wait Tip"));
    EXPECT_FALSE(window->isCancelShown());
    window->setPercent(0.4567);
    EXPECT_EQ(window->tipText(), "45.7%");
    EXPECT_TRUE(window->isCancelShown());
    EXPECT_DOUBLE_EQ(window->percent, 0.4567);
    window->setPercent(1.0);
    EXPECT_EQ(window->tipText(), "100.0%");
    window->open(); // back to waiting, without a second window
    EXPECT_FALSE(window->isCancelShown());
    window->close();
    EXPECT_FALSE(window->isOpen());
    EXPECT_EQ(kinds(), (std::vector<Kind>{Kind::Open, Kind::Percent, Kind::Percent, Kind::Close}));
    EXPECT_DOUBLE_EQ(ui->progress()[1].fraction, 0.4567);
}

TEST_F(LoadingWinCtlTest, AClosedWindowReportsNothingToTheUi) {
    window->setPercent(0.5);
    window->close();
    EXPECT_TRUE(ui->progress().empty());
    EXPECT_EQ(window->tipText(), "50.0%");
}

TEST_F(LoadingWinCtlTest, CancelRunsTheHandlerOnceAndClosesTheWindow) {
    int cancels = 0;
    window->cancelHandler = [&] { ++cancels; };
    window->open();
    window->setPercent(0.25);
    ui->cancelProgress();
    EXPECT_EQ(cancels, 1);
    EXPECT_FALSE(window->isOpen());
    EXPECT_FALSE(window->cancelHandler);
    ui->cancelProgress(); // the window is gone: nothing to press
    window->open();
    ui->cancelProgress(); // reopened: the handler was used up, the window still closes
    EXPECT_EQ(cancels, 1);
    EXPECT_FALSE(window->isOpen());
}

TEST_F(LoadingWinCtlTest, CancelAfterTheModelIsGoneDoesNothing) {
    window->open();
    window.reset();
    ui->cancelProgress();
    EXPECT_EQ(kinds(), (std::vector<Kind>{Kind::Open}));
}

TEST_F(LoadingWinCtlTest, SuccessShowsForOneSecondThenClosesAndCompletes) {
    int completions = 0;
    const auto start = std::chrono::steady_clock::now();
    window->showSuccess("Done here", [&] { ++completions; });
    EXPECT_TRUE(window->isOpen());
    EXPECT_TRUE(window->isSuccessShown());
    EXPECT_EQ(window->tipText(), "Done here");
    queue::runPendingOnce();
    EXPECT_EQ(completions, 0);
    std::weak_ptr<PXLoadingWinCtl> alive = window;
    window.reset(); // the pending close keeps the model until it has run
    queue::runUntilIdle();
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(950));
    EXPECT_EQ(completions, 1);
    EXPECT_TRUE(alive.expired());
    EXPECT_EQ(kinds(), (std::vector<Kind>{Kind::Open, Kind::Success, Kind::Close}));
    EXPECT_EQ(ui->progress()[1].text, "Done here");
}

} // namespace
