#include "support/PXTaskQueue.h"

#include "support/Queues.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace px {
namespace {

using Entries = std::vector<std::string>;

// A target whose methods log their calls; each task decides how it ends through `ending`.
struct Worker {
    enum class Ending { Finish, Stall, Nothing };

    PXTaskQueue* queue = nullptr;
    Entries log;
    Ending ending = Ending::Finish;
    Entries* joined = nullptr; // outlives the worker

    void step(const std::string& name) {
        log.push_back(name);
        if (ending == Ending::Finish) queue->finishCurrentTask();
        if (ending == Ending::Stall) queue->stallCurrentTask();
    }
    void join(std::string first, const std::shared_ptr<std::string>& second, int count) {
        joined->push_back(first + "+" + *second + "x" + std::to_string(count));
        queue->finishCurrentTask();
    }
    void finished(PXTaskQueue&) { log.push_back("finished"); }
};

class PXTaskQueueTest : public ::testing::Test {
  protected:
    void TearDown() override { queue::runUntilIdle(); }

    PXTaskQueue tasks;
    std::shared_ptr<Worker> worker = makeWorker();

  private:
    std::shared_ptr<Worker> makeWorker() {
        auto made = std::make_shared<Worker>();
        made->queue = &tasks;
        return made;
    }
};

TEST_F(PXTaskQueueTest, RunsRecordedCallsOneAfterAnotherAsEachFinishes) {
    worker->ending = Worker::Ending::Nothing;
    tasks.taskWithTarget(worker).call(&Worker::step, "a");
    tasks.taskWithTarget(worker).call(&Worker::step, "b");
    EXPECT_TRUE(tasks.isRunning());
    queue::runUntilIdle();
    EXPECT_EQ(worker->log, (Entries{"a"})) << "b waits until a finishes";
    tasks.finishCurrentTask();
    queue::runUntilIdle();
    EXPECT_EQ(worker->log, (Entries{"a", "b"}));
    tasks.finishCurrentTask();
    EXPECT_TRUE(tasks.isEmpty());
}

TEST_F(PXTaskQueueTest, RestartStartsTheTaskOnTheNextTurnNotInsideTheCaller) {
    queue::enterForeground([&] {
        tasks.taskWithTarget(worker).call(&Worker::step, "a");
        EXPECT_TRUE(worker->log.empty());
    });
    EXPECT_EQ(queue::runPendingOnce(), 1);
    EXPECT_TRUE(worker->log.empty());
    EXPECT_TRUE(tasks.isRunning());
    queue::runPendingOnce();
    EXPECT_EQ(worker->log, (Entries{"a"}));
}

TEST_F(PXTaskQueueTest, FinishWhenNotRunningDoesNothing) {
    worker->ending = Worker::Ending::Nothing;
    tasks.finishCurrentTask(); // nothing recorded yet
    tasks.taskWithTarget(worker).call(&Worker::step, "a");
    tasks.taskWithTarget(worker).call(&Worker::step, "b");
    queue::runUntilIdle();

    tasks.finishCurrentTask();
    tasks.finishCurrentTask(); // b has not started: it must not be dropped
    queue::runUntilIdle();
    EXPECT_EQ(worker->log, (Entries{"a", "b"}));

    tasks.stallCurrentTask();
    tasks.finishCurrentTask(); // stalled, not running
    EXPECT_TRUE(tasks.isStalled());
    tasks.restart();
    queue::runUntilIdle();
    EXPECT_EQ(worker->log, (Entries{"a", "b", "b"}));
}

TEST_F(PXTaskQueueTest, RestartAfterAStallRunsTheStalledTaskAgainFromItsStart) {
    worker->ending = Worker::Ending::Stall;
    tasks.taskWithTarget(worker).call(&Worker::step, "a");
    tasks.taskWithTarget(worker).call(&Worker::step, "b");
    queue::runUntilIdle();
    EXPECT_EQ(worker->log, (Entries{"a"}));
    EXPECT_TRUE(tasks.isStalled());
    EXPECT_FALSE(tasks.isRunning());
    EXPECT_FALSE(tasks.isEmpty());

    worker->ending = Worker::Ending::Finish;
    tasks.restart();
    EXPECT_FALSE(tasks.isStalled());
    EXPECT_TRUE(tasks.isRunning());
    queue::runUntilIdle();
    EXPECT_EQ(worker->log, (Entries{"a", "a", "b"}));
    EXPECT_TRUE(tasks.isEmpty());
}

TEST_F(PXTaskQueueTest, FinishActionRunsEachTimeTheListEmpties) {
    int finishes = 0;
    PXTaskQueue* seen = nullptr;
    tasks.setFinishAction([&](PXTaskQueue& finishedQueue) {
        ++finishes;
        seen = &finishedQueue;
    });
    tasks.taskWithTarget(worker).call(&Worker::step, "a");
    tasks.taskWithTarget(worker).call(&Worker::step, "b");
    queue::runUntilIdle();
    EXPECT_EQ(finishes, 1);
    EXPECT_EQ(seen, &tasks);

    tasks.taskWithTarget(worker).call(&Worker::step, "c");
    queue::runUntilIdle();
    EXPECT_EQ(finishes, 2);
    EXPECT_EQ(worker->log, (Entries{"a", "b", "c"}));
}

TEST_F(PXTaskQueueTest, FinishActionMayBeAMethodOfAKeptTarget) {
    auto observer = std::make_shared<Worker>();
    std::weak_ptr<Worker> watch = observer;
    tasks.setFinishAction(&Worker::finished, std::move(observer));
    EXPECT_FALSE(watch.expired()) << "the finish target is held by the queue";
    tasks.restart(); // nothing recorded: the finish action at once
    ASSERT_FALSE(watch.expired());
    EXPECT_EQ(watch.lock()->log, (Entries{"finished"}));
}

TEST_F(PXTaskQueueTest, RecordedArgumentsAndTargetLiveUntilTheTaskFinished) {
    Entries joined;
    auto joiner = std::make_shared<Worker>();
    joiner->queue = &tasks;
    joiner->joined = &joined;
    std::weak_ptr<Worker> watch = joiner;
    auto second = std::make_shared<std::string>("two");
    {
        std::string first = "one";
        tasks.taskWithTarget(std::move(joiner)).call(&Worker::join, first, second, 3);
        first = "changed";
        second = nullptr;
    }
    EXPECT_FALSE(watch.expired()) << "the queue keeps the target while the task waits";
    queue::runUntilIdle();
    EXPECT_EQ(joined, (Entries{"one+twox3"}));
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
