#pragma once

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <optional>

// Page numbers handed out to worker threads one at a time, and a count of the finished ones
// that another thread can wait on.
namespace px::media {

class PageQueue {
  public:
    explicit PageQueue(int count) : m_count(count) {}

    int count() const { return m_count; }
    // The next page index not yet taken; empty when every page has been handed out.
    std::optional<int> take();
    // Counts one taken page as finished, whatever became of it.
    void finish();
    // Blocks until more than `seen` pages are finished; answers how many are.
    int waitForMoreThan(int seen);

  private:
    const int m_count;
    std::atomic<int> m_next{0};
    std::mutex m_mutex;
    std::condition_variable m_changed;
    int m_finished = 0;
};

} // namespace px::media
