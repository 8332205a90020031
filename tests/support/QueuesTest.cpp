#include "support/Queues.h"

#include "support/MainQueue.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace px::queue {
namespace {

using namespace std::chrono_literals;
using Entries = std::vector<std::string>;

// Every test leaves both queues empty for the next one.
class QueuesTest : public ::testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(isMainThread()); }
    void TearDown() override {
        runUntilIdle();
        EXPECT_TRUE(isIdle());
    }
    // Written from several threads.
    void add(std::string entry) {
        std::lock_guard lock(m_mutex);
        m_entries.push_back(std::move(entry));
    }
    Entries entries() {
        std::lock_guard lock(m_mutex);
        return m_entries;
    }

  private:
    std::mutex m_mutex;
    Entries m_entries;
};

TEST_F(QueuesTest, MainQueueRunsInOrderPostedTasksOnALaterTurnAndZeroDelayNeverInline) {
    enterForeground([&] {
        add("a");
        enterForeground([&] { add("c"); });
        enterForegroundWithDelay(0, [&] { add("d"); });
        EXPECT_EQ(entries(), Entries{"a"}) << "nothing runs inside the posting task";
    });
    enterForeground([&] { add("b"); });
    EXPECT_TRUE(entries().empty());
    EXPECT_EQ(runPendingOnce(), 2);
    EXPECT_EQ(entries(), (Entries{"a", "b"}));
    runUntilIdle();
    EXPECT_EQ(entries(), (Entries{"a", "b", "c", "d"}));
}

TEST_F(QueuesTest, BackgroundJobsRunInOrderOneAtATimeOnOneWorkerThread) {
    std::vector<int> order;
    std::vector<std::thread::id> threads;
    std::atomic<int> inFlight = 0, mostAtOnce = 0;
    auto submitter = [&](int first) {
        for (int i = first; i < first + 20; ++i)
            enterBackground([&, i] { // only the worker touches these until runUntilIdle returns
                mostAtOnce = std::max(mostAtOnce.load(), ++inFlight);
                order.push_back(i);
                threads.push_back(std::this_thread::get_id());
                std::this_thread::sleep_for(100us);
                --inFlight;
            });
    };
    std::thread other(submitter, 100);
    submitter(0);
    other.join();
    runUntilIdle();
    ASSERT_EQ(order.size(), 40u);
    EXPECT_EQ(mostAtOnce, 1);
    auto mine = std::stable_partition(order.begin(), order.end(), [](int i) { return i < 100; });
    EXPECT_TRUE(std::is_sorted(order.begin(), mine) && std::is_sorted(mine, order.end()));
    EXPECT_EQ(std::count(threads.begin(), threads.end(), threads.front()), 40);
    EXPECT_NE(threads.front(), std::this_thread::get_id());
}

TEST_F(QueuesTest, RunUntilIdleWaitsForBackgroundWorkThatPostsBackToMain) {
    std::atomic<bool> onMain = true;
    enterBackground([&] {
        std::this_thread::sleep_for(20ms);
        add("work");
        enterForeground([&] {
            onMain = onMain && isMainThread();
            add("progress");
            enterBackgroundAfter(10ms, [&] {
                add("more work");
                enterForegroundWithDelay(0, [&] {
                    onMain = onMain && isMainThread();
                    add("done");
                });
            });
        });
    });
    EXPECT_FALSE(isIdle());
    runUntilIdle();
    EXPECT_EQ(entries(), (Entries{"work", "progress", "more work", "done"}));
    EXPECT_TRUE(onMain);
}

TEST_F(QueuesTest, SyncOnMainBlocksTheBackgroundUntilTheTaskRanAndPassesExceptionsBack) {
    std::atomic<bool> sawResult = false, caught = false;
    enterBackground([&] {
        int value = 0;
        syncOnMain([&] {
            std::this_thread::sleep_for(5ms);
            value = isMainThread() ? 42 : -1;
        });
        sawResult = value == 42;
        try {
            syncOnMain([] { throw std::runtime_error("no disk"); });
        } catch (const std::runtime_error& e) {
            caught = std::string(e.what()) == "no disk";
        }
    });
    runUntilIdle();
    EXPECT_TRUE(sawResult);
    EXPECT_TRUE(caught);
    bool ranInline = false;
    syncOnMain([&] { ranInline = true; });
    EXPECT_TRUE(ranInline) << "on the main thread the task runs at once";
}

TEST_F(QueuesTest, ThrowingTasksAreReportedAndTheQueuesGoOn) {
    std::atomic<int> after = 0;
    testing::internal::CaptureStderr();
    enterForeground([] { throw std::runtime_error("main broke"); });
    enterForeground([&] { ++after; });
    enterBackground([] { throw 7; });
    enterBackground([&] { ++after; });
    runUntilIdle();
    std::string err = testing::internal::GetCapturedStderr();
    EXPECT_EQ(after, 2);
    EXPECT_NE(err.find("main queue failed: main broke\n"), std::string::npos) << err;
    EXPECT_NE(err.find("background queue failed"), std::string::npos) << err;
    EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 2) << err;
}

TEST_F(QueuesTest, TasksPostedFromManyThreadsAllRunInEachPostersOrder) {
    constexpr int kThreads = 4, kEach = 200;
    std::vector<std::vector<int>> seen(kThreads);
    std::vector<std::thread> posters;
    for (int t = 0; t < kThreads; ++t)
        posters.emplace_back([&, t] {
            for (int i = 0; i < kEach; ++i) {
                enterForeground([&, t, i] { seen[t].push_back(i); });
                if (i % 50 == 0) enterBackground([] {});
            }
        });
    runPendingOnce(); // pumping while the posters are still at it
    for (auto& poster : posters)
        poster.join();
    runUntilIdle();
    for (const auto& list : seen) {
        ASSERT_EQ(list.size(), std::size_t(kEach));
        EXPECT_TRUE(std::is_sorted(list.begin(), list.end()));
    }
}

} // namespace
} // namespace px::queue

// What a foreign event loop needs: a wake from any posting thread and the time to pump next.
TEST(MainQueueSeams, WakeCallbackAndNextTurnLetAnotherLoopPump) {
    using namespace std::chrono_literals;
    px::queue::MainQueue queue;
    std::atomic<int> wakes = 0;
    queue.setWakeCallback([&] { ++wakes; });
    EXPECT_FALSE(queue.nextTurn()) << "an empty queue has no next turn";

    const auto due = px::queue::Clock::now() + 1h;
    const auto delayed = queue.postAt(due, [] {});
    EXPECT_EQ(queue.nextTurn(), due);
    std::thread([&] { queue.post([] {}); }).join();
    EXPECT_EQ(wakes, 2);
    const auto turn = queue.nextTurn();
    EXPECT_LE(turn, px::queue::Clock::now()) << "ready work is due now";
    EXPECT_EQ(queue.runPendingOnce(), 1);
    EXPECT_EQ(queue.nextTurn(), due);
    queue.cancel(delayed);
    EXPECT_FALSE(queue.nextTurn());
    queue.wake();
    EXPECT_EQ(wakes, 3);
}

// A host with its own loop takes over runUntilIdle's wait: the waiter runs until the work that
// background jobs post back is done.
TEST(IdleWaiterSeam, RunUntilIdleHandsItsWaitToTheHostsLoop) {
    using namespace px::queue;
    markMainThread();
    int waits = 0;
    setIdleWaiter([&](const std::function<bool()>& idle) {
        ++waits;
        while (!idle())
            runPendingOnce();
    });
    std::atomic<bool> ranBack = false;
    enterBackground([&] { enterForeground([&] { ranBack = true; }); });
    runUntilIdle();
    setIdleWaiter({});
    EXPECT_EQ(waits, 1);
    EXPECT_TRUE(ranBack);
    EXPECT_TRUE(isIdle());
}
