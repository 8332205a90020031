#pragma once

#include "support/TaskSchedule.h"

#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

namespace px::queue {

// A serial queue on a worker thread of its own: tasks run strictly one after another, in the
// order they were posted (delayed ones when they fall due).
class SerialQueue {
  public:
    // `label` names the worker thread (cut to the 15 bytes a thread name holds); `onIdle` is
    // called on the worker, with no lock held, each time the queue runs out of work.
    SerialQueue(std::string label, std::function<void()> onIdle);
    // Lets the running task end, drops the waiting ones and joins the worker.
    ~SerialQueue();
    SerialQueue(const SerialQueue&) = delete;
    SerialQueue& operator=(const SerialQueue&) = delete;

    void post(Task task);
    TaskId postAt(Clock::time_point due, Task task);

    // Nothing waiting (delayed tasks included) and nothing running.
    bool isIdle() const;
    bool isCurrentThread() const { return std::this_thread::get_id() == m_worker.get_id(); }
    const std::string& label() const { return m_label; }

  private:
    void work();
    bool waitForTask(std::unique_lock<std::mutex>& lock);
    void runOne(std::unique_lock<std::mutex>& lock);

    const std::string m_label;
    const std::function<void()> m_onIdle;
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    TaskSchedule m_schedule;
    bool m_running = false;
    bool m_stopping = false;
    std::thread m_worker;
};

} // namespace px::queue
