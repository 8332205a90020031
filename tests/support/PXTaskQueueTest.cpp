#include "support/PXTaskQueue.h"

#include "support/Queues.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace px {
namespace {

using Entries = std::vector<std::string>;

// The task queue serves no command yet; these are the checks of its order and lifetimes.
// A target whose methods log their calls; each task decides how it ends through `ending`.
struct Worker {
    enum class Ending { Finish, Stall, Nothing };

    PXTaskQueue* queue = nullptr;
    Entries log;
    Ending ending = Ending::Finish;

    void step(const std::string& name) {
        log.push_back(name);
        if (ending == Ending::Finish) queue->finishCurrentTask();
        if (ending == Ending::Stall) queue->stallCurrentTask();
    }
    void join(std::string first, const std::shared_ptr<std::string>& second, int count) {
        log.push_back(first + "+" + *second + "x" + std::to_string(count));
        queue->finishCurrentTask();
    }
};

class PXTaskQueueTest : public ::testing::Test {
  protected:
    void TearDown() override { queue::runUntilIdle(); }
    void record(const char* name) { tasks.taskWithTarget(worker).call(&Worker::step, name); }

    PXTaskQueue tasks;
    std::shared_ptr<Worker> worker = [this] {
        auto made = std::make_shared<Worker>();
        made->queue = &tasks;
        return made;
    }();
};

TEST_F(PXTaskQueueTest, EachTaskStartsOnALaterTurnOnlyOnceThePreviousOneFinished) {
    worker->ending = Worker::Ending::Nothing;
    tasks.finishCurrentTask(); // nothing recorded yet
    record("a");
    record("b");
    EXPECT_TRUE(worker->log.empty()) << "never inside the caller";
    EXPECT_TRUE(tasks.isRunning());
    queue::runUntilIdle();
    EXPECT_EQ(worker->log, (Entries{"a"}));
    tasks.finishCurrentTask();
    tasks.finishCurrentTask(); // b has not started: it must not be dropped
    queue::runUntilIdle();
    EXPECT_EQ(worker->log, (Entries{"a", "b"}));
    tasks.finishCurrentTask();
    EXPECT_TRUE(tasks.isEmpty());
}

TEST_F(PXTaskQueueTest, RestartAfterAStallRunsTheStalledTaskAgainFromItsStart) {
    worker->ending = Worker::Ending::Stall;
    record("a");
    record("b");
    queue::runUntilIdle();
    EXPECT_EQ(worker->log, (Entries{"a"}));
    tasks.finishCurrentTask(); // stalled, not running
    EXPECT_TRUE(tasks.isStalled());
    EXPECT_FALSE(tasks.isRunning() || tasks.isEmpty());
    worker->ending = Worker::Ending::Finish;
    tasks.restart();
    queue::runUntilIdle();
    EXPECT_EQ(worker->log, (Entries{"a", "a", "b"}));
    EXPECT_TRUE(tasks.isEmpty());
}

TEST_F(PXTaskQueueTest, RecordedArgumentsAndTargetLiveUntilTheTaskFinished) {
    std::weak_ptr<Worker> watch = worker;
    auto second = std::make_shared<std::string>("two");
    {
        std::string first = "one";
        tasks.taskWithTarget(std::move(worker)).call(&Worker::join, first, second, 3);
        first = "changed";
        second = nullptr;
    }
    ASSERT_FALSE(watch.expired()) << "the queue keeps the target while the task waits";
    auto target = watch.lock();
    queue::runUntilIdle();
    EXPECT_EQ(target->log, (Entries{"one+twox3"}));
    target.reset();
    EXPECT_TRUE(watch.expired()) << "and lets it go once the task finished";
}

TEST_F(PXTaskQueueTest, AQueueGoneBeforeItsTaskStartsIsLeftAlone) {
    auto shortLived = std::make_unique<PXTaskQueue>();
    worker->queue = shortLived.get();
    shortLived->taskWithTarget(worker).call(&Worker::step, "never");
    shortLived.reset();
    queue::runUntilIdle();
    EXPECT_TRUE(worker->log.empty());
}

} // namespace
} // namespace px
