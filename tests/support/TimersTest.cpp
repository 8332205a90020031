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

class TimersTest : public ::testing::Test {
  protected:
    void TearDown() override {
        queue::runUntilIdle();
        EXPECT_TRUE(queue::isIdle());
    }
};

TEST_F(TimersTest, OneShotTimerFiresOnceOnTheMainQueueAfterItsInterval) {
    int fired = 0;
    bool onMain = false;
    auto start = Stopwatch::now();
    Stopwatch::duration firedAfter{};
    auto timer = scheduled(
        0.02,
        [&](Timer& t) {
            ++fired;
            onMain = queue::isMainThread();
            firedAfter = Stopwatch::now() - start;
            EXPECT_FALSE(t.repeats());
        },
        false);
    EXPECT_EQ(fired, 0);
    EXPECT_TRUE(timer->isValid());
    queue::runUntilIdle();
    EXPECT_EQ(fired, 1);
    EXPECT_TRUE(onMain);
    EXPECT_GE(firedAfter, 20ms);
    EXPECT_FALSE(timer->isValid());
}

TEST_F(TimersTest, RepeatingTimerKeepsFiringUntilCancelledEvenWithoutItsHandle) {
    int fired = 0;
    auto start = Stopwatch::now();
    scheduled(
        0.005,
        [&](Timer& t) {
            if (++fired == 4) cancelTimer(t.shared_from_this());
        },
        true);
    queue::runUntilIdle(); // returns only once the timer is cancelled
    EXPECT_EQ(fired, 4);
    EXPECT_GE(Stopwatch::now() - start, 20ms);
}

TEST_F(TimersTest, CancelledTimerNeverFiresAndIsNoLongerPendingWork) {
    bool fired = false;
    auto timer = scheduled(
        10.0, [&](Timer&) { fired = true; }, true);
    EXPECT_FALSE(queue::isIdle());
    cancelTimer(timer);
    cancelTimer(timer);
    cancelTimer(nullptr);
    EXPECT_FALSE(timer->isValid());
    EXPECT_TRUE(queue::isIdle());
    auto start = Stopwatch::now();
    queue::runUntilIdle();
    EXPECT_LT(Stopwatch::now() - start, 1s);
    EXPECT_FALSE(fired);
}

TEST_F(TimersTest, RepeatingTimerCancelledFromAnotherTaskStops) {
    int fired = 0;
    auto timer = scheduled(
        0.002, [&](Timer&) { ++fired; }, true);
    queue::enterForegroundAfter(30ms, [&] { cancelTimer(timer); });
    queue::runUntilIdle();
    int atCancel = fired;
    EXPECT_GE(atCancel, 2);
    std::this_thread::sleep_for(10ms);
    EXPECT_EQ(queue::runPendingOnce(), 0);
    EXPECT_EQ(fired, atCancel);
}

TEST_F(TimersTest, ZeroOrNonsenseIntervalsFireOnALaterTurn) {
    int fired = 0;
    scheduled(
        0, [&](Timer&) { ++fired; }, false);
    scheduled(
        -3, [&](Timer&) { ++fired; }, false);
    scheduled(
        std::nan(""), [&](Timer&) { ++fired; }, false);
    EXPECT_EQ(fired, 0);
    queue::runUntilIdle();
    EXPECT_EQ(fired, 3);
}

TEST_F(TimersTest, ThreadTimerFiresEveryIntervalOffTheMainThreadUntilCancelled) {
    std::atomic<int> fired = 0;
    std::atomic<bool> offMain = true;
    auto start = Stopwatch::now();
    std::atomic<long long> firstAfterNs = 0;
    auto timer = gcdScheduled(0.01, [&] {
        if (fired++ == 0) firstAfterNs = (Stopwatch::now() - start).count();
        offMain = offMain && !queue::isMainThread() && !queue::isBackgroundThread();
    });
    while (fired < 3)
        std::this_thread::sleep_for(1ms);
    cancelGCDTimer(timer.get());
    int atCancel = fired;
    EXPECT_TRUE(timer->isCancelled());
    EXPECT_TRUE(offMain);
    EXPECT_GE(Stopwatch::duration(firstAfterNs.load()), 10ms);
    EXPECT_GE(Stopwatch::now() - start, 30ms);
    std::this_thread::sleep_for(25ms);
    EXPECT_EQ(fired, atCancel) << "no firing after cancel returned";
    cancelGCDTimer(nullptr);
}

TEST_F(TimersTest, DroppingTheThreadTimerCancelsIt) {
    std::atomic<int> fired = 0;
    auto timer = gcdScheduled(0.005, [&] { ++fired; });
    while (fired < 1)
        std::this_thread::sleep_for(1ms);
    timer.reset();
    int atDrop = fired;
    std::this_thread::sleep_for(20ms);
    EXPECT_EQ(fired, atDrop);
}

TEST_F(TimersTest, ThreadTimerMayBeDroppedFromItsOwnHandler) {
    std::atomic<int> fired = 0;
    std::unique_ptr<GcdTimer> timer;
    std::atomic<bool> armed = false, dropped = false;
    timer = gcdScheduled(0.002, [&] {
        if (!armed) return; // `timer` is not assigned yet
        ++fired;
        timer.reset();
        dropped = true;
    });
    armed = true;
    while (!dropped)
        std::this_thread::sleep_for(1ms);
    std::this_thread::sleep_for(10ms);
    EXPECT_EQ(fired, 1);
}

} // namespace
} // namespace px::timer
