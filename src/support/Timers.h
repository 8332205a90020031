#pragma once

#include "support/GcdTimer.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>

namespace px::timer {

// A timer firing on the main queue. The main queue keeps it while it is scheduled, so it fires
// whether or not the caller keeps the handle. A scheduled repeating timer counts as pending
// main-queue work until it is cancelled: runUntilIdle does not return before that.
class Timer : public std::enable_shared_from_this<Timer> {
  public:
    using Block = std::function<void(Timer&)>;

    Timer(std::chrono::nanoseconds interval, Block block, bool repeats);

    double timeInterval() const;
    bool repeats() const { return m_repeats; }
    bool isValid() const { return m_valid.load(); }
    // Stops the timer; it never fires again. The block may call it on its own timer.
    void invalidate();

    // Queues the next firing; used when the timer is scheduled.
    void scheduleAt(std::chrono::steady_clock::time_point due);

  private:
    void fire(std::chrono::steady_clock::time_point due);

    const std::chrono::nanoseconds m_interval;
    const Block m_block;
    const bool m_repeats;
    std::atomic<bool> m_valid{true};
    std::atomic<std::uint64_t> m_pending{0};
};

using TimerHandle = std::shared_ptr<Timer>;

// A timer on the main queue calling `block` with the timer after `intervalSeconds`, and again
// every interval when `repeats`. A one-shot timer is invalid once it has fired.
TimerHandle scheduled(double intervalSeconds, Timer::Block block, bool repeats);
// Invalidates the timer if it is still valid; a null handle is ignored.
void cancelTimer(const TimerHandle& timer);

// A timer on a thread of its own (see GcdTimer); the caller keeps it, and dropping it cancels
// it.
std::unique_ptr<GcdTimer> gcdScheduled(double intervalSeconds, std::function<void()> handler);
// Cancels such a timer; null is ignored.
void cancelGCDTimer(GcdTimer* timer);

} // namespace px::timer
