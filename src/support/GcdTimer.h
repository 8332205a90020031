#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <thread>

namespace px::timer {

// Intervals shorter than this (zero, negative) fire this often rather than in a tight loop.
constexpr std::chrono::nanoseconds kShortestInterval = std::chrono::microseconds(100);

// The firing of a fixed-interval timer that follows `due`, skipping the ones already missed.
std::chrono::steady_clock::time_point nextFiring(std::chrono::steady_clock::time_point due,
                                                 std::chrono::nanoseconds interval);

// A timer on a thread of its own (not the main queue): the handler runs first after one
// interval and then every interval, on a fixed schedule; firings missed while the handler was
// busy are merged into one. Cancelled by cancel() or when the object is destroyed.
class GcdTimer {
  public:
    GcdTimer(std::chrono::nanoseconds interval, std::function<void()> handler);
    ~GcdTimer();
    GcdTimer(const GcdTimer&) = delete;
    GcdTimer& operator=(const GcdTimer&) = delete;

    // Once it returns the handler does not start again; from another thread it also waits for
    // a running handler to end. Cancelling twice is harmless.
    void cancel();
    bool isCancelled() const;

  private:
    struct State;
    static void fireUntilCancelled(const std::shared_ptr<State>& state,
                                   std::chrono::nanoseconds interval,
                                   const std::function<void()>& handler);

    std::shared_ptr<State> m_state;
    std::thread m_thread;
};

} // namespace px::timer
