#pragma once

#include "support/TaskSchedule.h"

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>

namespace px::queue {

// The main queue: a run loop pumped by whichever thread calls runPendingOnce or runUntilIdle.
// Tasks may be posted from any thread; they run one at a time on the pumping thread, never
// inside the call that posts them.
class MainQueue {
  public:
    void post(Task task);
    // A due time that has already passed still runs the task on a later turn.
    TaskId postAt(Clock::time_point due, Task task);
    // Removes a delayed task that has not run yet; answers whether it was still waiting.
    bool cancel(TaskId id);

    // One turn: runs the tasks ready when the turn begins (delayed ones now due included);
    // tasks they post wait for the next turn. Answers how many ran.
    int runPendingOnce();
    // Pumps until this queue holds nothing and `otherWorkPending` answers false. The predicate
    // is asked with this queue's lock held; whoever can change its answer calls wake() after.
    void runUntilIdle(const std::function<bool()>& otherWorkPending);
    // Makes a waiting runUntilIdle look again.
    void wake();

    // For a foreign event loop that pumps this queue: the callback is called, from whichever
    // thread posts, after every post and wake(); it must only arrange for the loop to look
    // (never run tasks inline). Empty: none.
    void setWakeCallback(std::function<void()> callback);
    // When the loop should pump next: now when tasks are ready, the next delayed task's due
    // time, or none when the queue is empty.
    std::optional<Clock::time_point> nextTurn() const;

    bool isEmpty() const;

  private:
    void waitForWork(std::unique_lock<std::mutex>& lock, const std::function<bool()>& otherWork);
    void changed();

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    TaskSchedule m_schedule;
    // Counts every change of the schedule and every wake(), so a waiter notices any of them.
    std::uint64_t m_generation = 0;
    std::shared_ptr<std::function<void()>> m_wakeCallback;
};

// The process-wide main queue.
MainQueue& mainQueue();

} // namespace px::queue
