#include "support/MainQueue.h"

namespace px::queue {

void MainQueue::post(Task task) {
    {
        std::lock_guard lock(m_mutex);
        m_schedule.push(std::move(task));
        ++m_generation;
    }
    changed();
}

TaskId MainQueue::postAt(Clock::time_point due, Task task) {
    TaskId id;
    {
        std::lock_guard lock(m_mutex);
        id = m_schedule.pushAt(due, std::move(task));
        ++m_generation;
    }
    changed();
    return id;
}

bool MainQueue::cancel(TaskId id) {
    bool removed;
    {
        std::lock_guard lock(m_mutex);
        removed = m_schedule.cancel(id);
        if (removed) ++m_generation;
    }
    if (removed) m_changed.notify_all();
    return removed;
}

int MainQueue::runPendingOnce() {
    std::deque<Task> batch;
    {
        std::lock_guard lock(m_mutex);
        m_schedule.promoteDue(Clock::now());
        batch = m_schedule.takeReady();
    }
    int count = 0;
    for (; !batch.empty(); batch.pop_front(), ++count)
        runReportingFailure(batch.front(), "main");
    return count;
}

void MainQueue::runUntilIdle(const std::function<bool()>& otherWorkPending) {
    for (;;) {
        if (runPendingOnce() > 0) continue;
        std::unique_lock lock(m_mutex);
        m_schedule.promoteDue(Clock::now());
        if (m_schedule.hasReady()) continue;
        if (m_schedule.isEmpty() && !otherWorkPending()) return;
        waitForWork(lock, otherWorkPending);
    }
}

// Sleeps until the next delayed task is due or the schedule changes or wake() is called.
void MainQueue::waitForWork(std::unique_lock<std::mutex>& lock,
                            const std::function<bool()>& otherWork) {
    std::uint64_t seen = m_generation;
    auto changed = [&] { return m_generation != seen || (m_schedule.isEmpty() && !otherWork()); };
    if (auto due = m_schedule.nextDue())
        m_changed.wait_until(lock, *due, changed);
    else
        m_changed.wait(lock, changed);
}

void MainQueue::wake() {
    {
        std::lock_guard lock(m_mutex);
        ++m_generation;
    }
    changed();
}

void MainQueue::changed() {
    m_changed.notify_all();
    std::shared_ptr<std::function<void()>> callback;
    {
        std::lock_guard lock(m_mutex);
        callback = m_wakeCallback;
    }
    if (callback && *callback) (*callback)();
}

void MainQueue::setWakeCallback(std::function<void()> callback) {
    auto shared = std::make_shared<std::function<void()>>(std::move(callback));
    std::lock_guard lock(m_mutex);
    m_wakeCallback = std::move(shared);
}

std::optional<Clock::time_point> MainQueue::nextTurn() const {
    std::lock_guard lock(m_mutex);
    if (m_schedule.hasReady()) return Clock::now();
    return m_schedule.nextDue();
}

bool MainQueue::isEmpty() const {
    std::lock_guard lock(m_mutex);
    return m_schedule.isEmpty();
}

} // namespace px::queue
