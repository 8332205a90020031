#include "support/GcdTimer.h"

#include "support/TaskSchedule.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>

namespace px::timer {

// Shared with the timer's thread, so that the thread may outlive a timer cancelled from
// inside its own handler.
struct GcdTimer::State {
    std::mutex mutex;
    std::condition_variable changed;
    bool cancelled = false;

    // Sleeps until `due`; answers false when cancelled meanwhile.
    bool sleepUntil(queue::Clock::time_point due) {
        std::unique_lock lock(mutex);
        return !changed.wait_until(lock, due, [this] { return cancelled; });
    }
};

queue::Clock::time_point nextFiring(queue::Clock::time_point due,
                                    std::chrono::nanoseconds interval) {
    auto now = queue::Clock::now();
    due += interval;
    if (due <= now) due += (now - due) / interval * interval + interval;
    return due;
}

void GcdTimer::fireUntilCancelled(const std::shared_ptr<State>& state,
                                  std::chrono::nanoseconds interval,
                                  const std::function<void()>& handler) {
    auto due = queue::Clock::now() + interval;
    while (state->sleepUntil(due)) {
        queue::runReportingFailure(handler, "timer");
        due = nextFiring(due, interval);
    }
}

GcdTimer::GcdTimer(std::chrono::nanoseconds interval, std::function<void()> handler)
    : m_state(std::make_shared<State>()) {
    interval = std::max(interval, kShortestInterval);
    m_thread = std::thread([state = m_state, interval, handler = std::move(handler)] {
        fireUntilCancelled(state, interval, handler);
    });
}

GcdTimer::~GcdTimer() {
    cancel();
    if (m_thread.joinable()) m_thread.detach(); // destroyed by its own handler
}

void GcdTimer::cancel() {
    {
        std::lock_guard lock(m_state->mutex);
        m_state->cancelled = true;
    }
    m_state->changed.notify_all();
    if (m_thread.joinable() && m_thread.get_id() != std::this_thread::get_id()) m_thread.join();
}

bool GcdTimer::isCancelled() const {
    std::lock_guard lock(m_state->mutex);
    return m_state->cancelled;
}

} // namespace px::timer
