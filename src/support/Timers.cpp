#include "support/Timers.h"

#include "support/MainQueue.h"

#include <algorithm>

namespace px::timer {

namespace {

using Clock = queue::Clock;

// Far beyond any use, yet safe from overflow when added to the clock.
constexpr double kLongestIntervalSeconds = 1e9;

std::chrono::nanoseconds toInterval(double seconds) {
    if (!(seconds > 0)) return kShortestInterval; // zero, negative, not a number
    seconds = std::min(seconds, kLongestIntervalSeconds);
    auto interval = std::chrono::duration_cast<std::chrono::nanoseconds>(
        std::chrono::duration<double>(seconds));
    return std::max(interval, kShortestInterval);
}

} // namespace

Timer::Timer(std::chrono::nanoseconds interval, Block block, bool repeats)
    : m_interval(std::max(interval, kShortestInterval)), m_block(std::move(block)),
      m_repeats(repeats) {}

double Timer::timeInterval() const {
    return std::chrono::duration<double>(m_interval).count();
}

void Timer::invalidate() {
    if (!m_valid.exchange(false)) return;
    queue::mainQueue().cancel(m_pending.load());
}

void Timer::scheduleAt(Clock::time_point due) {
    m_pending =
        queue::mainQueue().postAt(due, [self = shared_from_this(), due] { self->fire(due); });
    // Invalidated from another thread while this was being queued: take the firing back.
    if (!isValid()) queue::mainQueue().cancel(m_pending.load());
}

void Timer::fire(Clock::time_point due) {
    if (!isValid()) return;
    queue::runReportingFailure([this] { m_block(*this); }, "timer");
    if (m_repeats && isValid())
        scheduleAt(nextFiring(due, m_interval));
    else
        m_valid = false;
}

TimerHandle scheduled(double intervalSeconds, Timer::Block block, bool repeats) {
    auto interval = toInterval(intervalSeconds);
    auto timer = std::make_shared<Timer>(interval, std::move(block), repeats);
    timer->scheduleAt(Clock::now() + interval);
    return timer;
}

void cancelTimer(const TimerHandle& timer) {
    if (timer) timer->invalidate();
}

std::unique_ptr<GcdTimer> gcdScheduled(double intervalSeconds, std::function<void()> handler) {
    return std::make_unique<GcdTimer>(toInterval(intervalSeconds), std::move(handler));
}

void cancelGCDTimer(GcdTimer* timer) {
    if (timer) timer->cancel();
}

} // namespace px::timer
