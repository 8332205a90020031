#include "support/Queues.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <mutex>
#include <pthread.h>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace px::queue {
namespace {

using namespace std::chrono_literals;
using Stopwatch = std::chrono::steady_clock;

// Every test leaves both queues empty for the next one.
class QueuesTest : public ::testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(isMainThread()); }
    void TearDown() override {
        runUntilIdle();
        EXPECT_TRUE(isIdle());
    }
};

// A log written from several threads.
class Log {
  public:
    void add(std::string entry) {
        std::lock_guard lock(m_mutex);
        m_entries.push_back(std::move(entry));
    }
    std::vector<std::string> entries() const {
        std::lock_guard lock(m_mutex);
        return m_entries;
    }

  private:
    mutable std::mutex m_mutex;
    std::vector<std::string> m_entries;
};

using Entries = std::vector<std::string>;

TEST_F(QueuesTest, MainQueueRunsTasksInSubmissionOrderAndPostedOnesAfter) {
    Log log;
    enterForeground([&] {
        log.add("a");
        enterForeground([&] { log.add("c"); });
    });
    enterForeground([&] { log.add("b"); });
    EXPECT_TRUE(log.entries().empty());
    EXPECT_EQ(runPendingOnce(), 2);
    EXPECT_EQ(log.entries(), (Entries{"a", "b"}));
    EXPECT_EQ(runPendingOnce(), 1);
    EXPECT_EQ(log.entries(), (Entries{"a", "b", "c"}));
    EXPECT_EQ(runPendingOnce(), 0);
}

TEST_F(QueuesTest, ZeroDelayRunsLaterNeverInline) {
    bool ran = false;
    enterForegroundWithDelay(0, [&] { ran = true; });
    EXPECT_FALSE(ran);
    EXPECT_FALSE(isIdle());
    runPendingOnce();
    EXPECT_TRUE(ran);

    std::atomic<bool> ranInBackground = false;
    enterForeground([&] {
        enterForegroundWithDelay(0, [&] { ran = false; });
        EXPECT_TRUE(ran) << "a zero delay must not run inside the posting task";
        enterBackgroundWithDelay(0, [&] { ranInBackground = isBackgroundThread(); });
    });
    runUntilIdle();
    EXPECT_FALSE(ran);
    EXPECT_TRUE(ranInBackground);
}

TEST_F(QueuesTest, DelayedTasksRunInDueOrderFirstInFirstOutAmongEqualTimes) {
    Log log;
    auto start = Stopwatch::now();
    enterForegroundAfter(40ms, [&] { log.add("40"); });
    enterForegroundAfter(15ms, [&] { log.add("15a"); });
    enterForegroundAfter(25ms, [&] { log.add("25"); });
    enterForegroundAfter(15ms, [&] { log.add("15b"); });
    enterForeground([&] { log.add("now"); });
    runUntilIdle();
    EXPECT_GE(Stopwatch::now() - start, 40ms);
    EXPECT_EQ(log.entries(), (Entries{"now", "15a", "15b", "25", "40"}));
}

TEST_F(QueuesTest, BackgroundDelayedTasksRunInDueOrder) {
    Log log;
    enterBackgroundAfter(30ms, [&] { log.add("30"); });
    enterBackgroundAfter(10ms, [&] { log.add("10"); });
    enterBackground([&] { log.add("now"); });
    runUntilIdle();
    EXPECT_EQ(log.entries(), (Entries{"now", "10", "30"}));
}

TEST_F(QueuesTest, BackgroundRunsInOrderOnOneNamedWorkerThread) {
    constexpr int kJobs = 50;
    std::vector<int> order;
    std::vector<std::thread::id> threads;
    std::string threadName;
    for (int i = 0; i < kJobs; ++i) {
        enterBackground([&, i] { // only the worker touches these until runUntilIdle returns
            order.push_back(i);
            threads.push_back(std::this_thread::get_id());
        });
    }
    enterBackground([&] {
        char name[16] = {};
        pthread_getname_np(pthread_self(), name, sizeof name);
        threadName = name;
    });
    runUntilIdle();
    ASSERT_EQ(order.size(), std::size_t(kJobs));
    for (int i = 0; i < kJobs; ++i)
        EXPECT_EQ(order[i], i);
    for (auto id : threads) {
        EXPECT_EQ(id, threads.front());
        EXPECT_NE(id, std::this_thread::get_id());
    }
    EXPECT_EQ(backgroundQueueLabel(), "org.pxmenu.taskQueue");
    EXPECT_EQ(threadName, backgroundQueueLabel().substr(0, 15));
}

TEST_F(QueuesTest, BackgroundJobsFromDifferentSubmittersNeverOverlap) {
    std::atomic<int> inFlight = 0;
    std::atomic<int> mostAtOnce = 0;
    std::atomic<int> finished = 0;
    auto job = [&] {
        int now = ++inFlight;
        mostAtOnce = std::max(mostAtOnce.load(), now);
        std::this_thread::sleep_for(3ms);
        --inFlight;
        ++finished;
    };
    auto submitter = [&] {
        for (int i = 0; i < 4; ++i)
            enterBackground(job);
    };
    std::thread first(submitter), second(submitter);
    first.join();
    second.join();
    enterForeground([&] { enterBackground(job); });
    runUntilIdle();
    EXPECT_EQ(finished, 9);
    EXPECT_EQ(mostAtOnce, 1);
}

TEST_F(QueuesTest, RunUntilIdleWaitsForBackgroundWorkThatPostsBackToMain) {
    Log log;
    std::atomic<bool> mainRanOnMainThread = true;
    enterBackground([&] {
        std::this_thread::sleep_for(20ms);
        log.add("work");
        enterForeground([&] {
            mainRanOnMainThread = mainRanOnMainThread && isMainThread();
            log.add("progress");
            enterBackgroundAfter(10ms, [&] {
                log.add("more work");
                enterForegroundWithDelay(0, [&] {
                    mainRanOnMainThread = mainRanOnMainThread && isMainThread();
                    log.add("done");
                });
            });
        });
    });
    EXPECT_FALSE(isIdle());
    runUntilIdle();
    EXPECT_TRUE(isIdle());
    EXPECT_EQ(log.entries(), (Entries{"work", "progress", "more work", "done"}));
    EXPECT_TRUE(mainRanOnMainThread);
}

TEST_F(QueuesTest, IsIdleIsFalseWhileABackgroundTaskRuns) {
    std::atomic<bool> started = false, release = false;
    enterBackground([&] {
        started = true;
        while (!release)
            std::this_thread::sleep_for(1ms);
    });
    while (!started)
        std::this_thread::sleep_for(1ms);
    EXPECT_FALSE(isIdle());
    release = true;
    runUntilIdle();
    EXPECT_TRUE(isIdle());
}

TEST_F(QueuesTest, SyncOnMainBlocksTheBackgroundUntilTheTaskRan) {
    std::atomic<bool> sawResult = false;
    std::atomic<bool> ranOnMain = false;
    enterBackground([&] {
        int value = 0;
        syncOnMain([&] {
            std::this_thread::sleep_for(5ms);
            ranOnMain = isMainThread();
            value = 42;
        });
        sawResult = value == 42;
    });
    runUntilIdle();
    EXPECT_TRUE(ranOnMain);
    EXPECT_TRUE(sawResult);

    bool inline_ = false;
    syncOnMain([&] { inline_ = true; });
    EXPECT_TRUE(inline_) << "on the main thread the task runs at once";
}

TEST_F(QueuesTest, SyncOnMainHandsAnExceptionToTheWaitingCaller) {
    std::atomic<bool> caught = false;
    enterBackground([&] {
        try {
            syncOnMain([] { throw std::runtime_error("no disk"); });
        } catch (const std::runtime_error& e) {
            caught = std::string(e.what()) == "no disk";
        }
    });
    runUntilIdle();
    EXPECT_TRUE(caught);
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
    for (int t = 0; t < kThreads; ++t) {
        posters.emplace_back([&, t] {
            for (int i = 0; i < kEach; ++i) {
                enterForeground([&, t, i] { seen[t].push_back(i); });
                if (i % 50 == 0) enterBackground([] {});
            }
        });
    }
    runPendingOnce(); // pumping while the posters are still at it
    for (auto& poster : posters)
        poster.join();
    runUntilIdle();
    for (const auto& list : seen) {
        ASSERT_EQ(list.size(), std::size_t(kEach));
        EXPECT_TRUE(std::is_sorted(list.begin(), list.end()));
    }
}

TEST_F(QueuesTest, WholeSecondDelaysWaitThatLongOnBothQueues) {
    std::atomic<bool> background = false, foreground = false;
    auto start = Stopwatch::now();
    enterBackgroundWithDelay(1, [&] { background = true; });
    enterForegroundWithDelay(1, [&] { foreground = true; });
    EXPECT_EQ(runPendingOnce(), 0);
    runUntilIdle();
    auto waited = Stopwatch::now() - start;
    EXPECT_TRUE(background);
    EXPECT_TRUE(foreground);
    EXPECT_GE(waited, 1s);
    EXPECT_LT(waited, 1500ms);
}

} // namespace
} // namespace px::queue
