#include "media/PageQueue.h"

namespace px::media {

std::optional<int> PageQueue::take() {
    const int index = m_next.fetch_add(1);
    if (index >= m_count) return std::nullopt;
    return index;
}

void PageQueue::finish() {
    {
        std::lock_guard lock(m_mutex);
        ++m_finished;
    }
    m_changed.notify_all();
}

int PageQueue::waitForMoreThan(int seen) {
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [&] { return m_finished > seen; });
    return m_finished;
}

} // namespace px::media
