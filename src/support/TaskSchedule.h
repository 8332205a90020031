#pragma once

#include "support/Queues.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string_view>

namespace px::queue {

using Clock = std::chrono::steady_clock;
using TaskId = std::uint64_t;

// The work of one queue: tasks ready to run (first in, first out) and delayed tasks ordered by
// due time, first in first out among equal times. Not locked: its queue guards it.
class TaskSchedule {
  public:
    void push(Task task);
    // Answers an id that `cancel` takes while the task is still waiting.
    TaskId pushAt(Clock::time_point due, Task task);
    bool cancel(TaskId id);

    // Moves the delayed tasks due at `now` behind the ready ones.
    void promoteDue(Clock::time_point now);
    bool hasReady() const { return !m_ready.empty(); }
    Task popReady();
    // Hands over every ready task at once, leaving none behind.
    std::deque<Task> takeReady();

    std::optional<Clock::time_point> nextDue() const;
    bool isEmpty() const { return m_ready.empty() && m_delayed.empty(); }

  private:
    struct Key {
        Clock::time_point due;
        TaskId id;
        auto operator<=>(const Key&) const = default;
    };

    std::deque<Task> m_ready;
    std::map<Key, Task> m_delayed;
    TaskId m_lastId = 0;
};

// Runs the task; an exception it throws is reported on one line of standard error, naming
// the queue, and goes no further.
void runReportingFailure(const Task& task, std::string_view queueName) noexcept;

} // namespace px::queue
