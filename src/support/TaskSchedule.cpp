#include "support/TaskSchedule.h"

#include <cstdio>
#include <exception>
#include <fmt/core.h>

namespace px::queue {

void TaskSchedule::push(Task task) {
    m_ready.push_back(std::move(task));
}

TaskId TaskSchedule::pushAt(Clock::time_point due, Task task) {
    TaskId id = ++m_lastId;
    m_delayed.emplace(Key{due, id}, std::move(task));
    return id;
}

bool TaskSchedule::cancel(TaskId id) {
    for (auto it = m_delayed.begin(); it != m_delayed.end(); ++it) {
        if (it->first.id == id) {
            m_delayed.erase(it);
            return true;
        }
    }
    return false;
}

void TaskSchedule::promoteDue(Clock::time_point now) {
    auto it = m_delayed.begin();
    while (it != m_delayed.end() && it->first.due <= now) {
        m_ready.push_back(std::move(it->second));
        it = m_delayed.erase(it);
    }
}

Task TaskSchedule::popReady() {
    Task task = std::move(m_ready.front());
    m_ready.pop_front();
    return task;
}

std::deque<Task> TaskSchedule::takeReady() {
    std::deque<Task> ready;
    ready.swap(m_ready);
    return ready;
}

std::optional<Clock::time_point> TaskSchedule::nextDue() const {
    if (m_delayed.empty()) return std::nullopt;
    return m_delayed.begin()->first.due;
}

void runReportingFailure(const Task& task, std::string_view queueName) noexcept {
    try {
        task();
    } catch (const std::exception& e) {
        fmt::print(stderr, "pxmenu: a task on the {} queue failed: {}\n", queueName, e.what());
    } catch (...) {
        fmt::print(stderr, "pxmenu: a task on the {} queue failed with an unknown error\n",
                   queueName);
    }
}

} // namespace px::queue
