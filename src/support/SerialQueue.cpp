#include "support/SerialQueue.h"

#include <pthread.h>

namespace px::queue {

namespace {

void nameCurrentThread(const std::string& label) {
    constexpr std::size_t kLongestThreadName = 15;
    pthread_setname_np(pthread_self(), label.substr(0, kLongestThreadName).c_str());
}

} // namespace

SerialQueue::SerialQueue(std::string label, std::function<void()> onIdle)
    : m_label(std::move(label)), m_onIdle(std::move(onIdle)), m_worker([this] { work(); }) {}

SerialQueue::~SerialQueue() {
    {
        std::lock_guard lock(m_mutex);
        m_stopping = true;
    }
    m_changed.notify_all();
    if (isCurrentThread())
        m_worker.detach(); // the process is leaving from inside one of our own tasks
    else
        m_worker.join();
}

void SerialQueue::post(Task task) {
    {
        std::lock_guard lock(m_mutex);
        m_schedule.push(std::move(task));
    }
    m_changed.notify_all();
}

TaskId SerialQueue::postAt(Clock::time_point due, Task task) {
    TaskId id;
    {
        std::lock_guard lock(m_mutex);
        id = m_schedule.pushAt(due, std::move(task));
    }
    m_changed.notify_all();
    return id;
}

bool SerialQueue::isIdle() const {
    std::lock_guard lock(m_mutex);
    return !m_running && m_schedule.isEmpty();
}

void SerialQueue::work() {
    nameCurrentThread(m_label);
    std::unique_lock lock(m_mutex);
    while (waitForTask(lock))
        runOne(lock);
}

// Answers false when the queue is stopping; otherwise returns with a task ready.
bool SerialQueue::waitForTask(std::unique_lock<std::mutex>& lock) {
    for (;;) {
        if (m_stopping) return false;
        m_schedule.promoteDue(Clock::now());
        if (m_schedule.hasReady()) return true;
        if (auto due = m_schedule.nextDue())
            m_changed.wait_until(lock, *due);
        else
            m_changed.wait(lock);
    }
}

void SerialQueue::runOne(std::unique_lock<std::mutex>& lock) {
    Task task = m_schedule.popReady();
    m_running = true;
    lock.unlock();
    runReportingFailure(task, "background");
    task = nullptr; // what the task captured goes before the queue reports itself idle
    lock.lock();
    m_running = false;
    if (!m_schedule.isEmpty() || !m_onIdle) return;
    lock.unlock();
    m_onIdle();
    lock.lock();
}

} // namespace px::queue
