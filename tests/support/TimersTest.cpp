#include "support/Timers.h"

#include "support/Queues.h"

#include <atomic>
#include <chrono>
#include <cmath>
#include <gtest/gtest.h>
#include <thread>

namespace px::timer {
namespace {

using namespace std::chrono_literals;
using Stopwatch = std::chrono::steady_clock;

// No command uses the timers yet; these are the checks of their firing and cancelling.
class TimersTest : public ::testing::Test {
  protected:
    void TearDown() override {
        queue::runUntilIdle();
        EXPECT_TRUE(queue::isIdle());
    }
    static void waitFor(const std::atomic<int>& count, int atLeast) {
        while (count < atLeast)
            std::this_thread::sleep_for(1ms);
    }
};

TEST_F(TimersTest, OneShotTimerFiresOnceOnTheMainQueueAfterItsInterval) {
    int fired = 0;
    auto start = Stopwatch::now();
    auto timer = scheduled(
        0.02,
        [&](Timer&) {
            fired += queue::isMainThread();
            EXPECT_GE(Stopwatch::now() - start, 20ms);
        },
        false);
    for (double nonsense : {0.0, -3.0, std::nan("")}) // fire on a later turn
        scheduled(
            nonsense, [&](Timer&) { fired += 10; }, false);
    EXPECT_EQ(fired, 0);
    queue::runUntilIdle();
    EXPECT_EQ(fired, 31);
    EXPECT_FALSE(timer->isValid());
}

TEST_F(TimersTest, CancelledTimerNeverFiresAgainAndIsNoLongerPendingWork) {
    int fired = 0;
    auto timer = scheduled(
        0.002, [&](Timer&) { ++fired; }, true);
    auto idle = scheduled(
        10.0, [&](Timer&) { fired += 1000; }, true);
    cancelTimer(idle);
    cancelTimer(idle);
    cancelTimer(nullptr);
    queue::enterForegroundAfter(30ms, [&] { cancelTimer(timer); });
    auto start = Stopwatch::now();
    queue::runUntilIdle();
    EXPECT_LT(Stopwatch::now() - start, 1s);
    const int atCancel = fired;
    EXPECT_GE(atCancel, 2);
    std::this_thread::sleep_for(10ms);
    EXPECT_EQ(queue::runPendingOnce(), 0);
    EXPECT_EQ(fired, atCancel);
}

TEST_F(TimersTest, ThreadTimerFiresOffTheMainThreadUntilCancelledOrDropped) {
    std::atomic<int> fired = 0;
    std::atomic<bool> offMain = true;
    auto start = Stopwatch::now();
    auto timer = gcdScheduled(0.01, [&] {
        ++fired;
        offMain = offMain && !queue::isMainThread() && !queue::isBackgroundThread();
    });
    waitFor(fired, 3);
    cancelGCDTimer(timer.get());
    int atCancel = fired;
    EXPECT_TRUE(offMain);
    EXPECT_GE(Stopwatch::now() - start, 30ms);

    std::atomic<int> dropped = 0;
    auto other = gcdScheduled(0.005, [&] { ++dropped; });
    waitFor(dropped, 1);
    other.reset();
    int atDrop = dropped;
    std::this_thread::sleep_for(25ms);
    EXPECT_EQ(fired, atCancel) << "no firing after cancel returned";
    EXPECT_EQ(dropped, atDrop);
}

} // namespace
} // namespace px::timer
