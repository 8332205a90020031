#include "media/ReadAhead.h"

#include <cerrno>
#include <unistd.h>

namespace px::digest {

ReadAhead::ReadAhead(int fd, std::string path, std::size_t bufferSize, std::size_t depth)
    : m_fd(fd), m_path(std::move(path)), m_slots(depth) {
    for (Slot& slot : m_slots)
        slot.bytes.resize(bufferSize);
    m_thread = std::thread([this] { run(); });
}

ReadAhead::~ReadAhead() {
    {
        std::lock_guard lock(m_mutex);
        m_stop = true;
    }
    m_changed.notify_all();
    m_thread.join();
}

// Fills slots in ring order until the end of the file, an error, or the reader is dropped.
void ReadAhead::run() {
    for (std::size_t index = 0;; index = (index + 1) % m_slots.size()) {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return m_stop || m_filled < m_slots.size(); });
        if (m_stop) return;
        lock.unlock();
        bool more = fill(m_slots[index]);
        lock.lock();
        ++m_filled;
        m_changed.notify_all();
        if (!more) return;
    }
}

// Reads one chunk into the slot; false once the end of the file or an error is reached.
bool ReadAhead::fill(Slot& slot) {
    for (;;) {
        ssize_t got = ::read(m_fd, slot.bytes.data(), slot.bytes.size());
        slot.error = got < 0 ? errno : 0;
        slot.size = got > 0 ? static_cast<std::size_t>(got) : 0;
        if (slot.error != EINTR) return got > 0;
    }
}

void ReadAhead::releaseHeld() {
    if (!m_holding) return;
    m_holding = false;
    m_readIndex = (m_readIndex + 1) % m_slots.size();
    --m_filled;
    m_changed.notify_all();
}

ErrorOr<std::span<const unsigned char>> ReadAhead::next() {
    std::unique_lock lock(m_mutex);
    releaseHeld();
    m_changed.wait(lock, [this] { return m_filled > 0; });
    const Slot& slot = m_slots[m_readIndex];
    if (slot.error != 0) return Error::fromErrno("cannot read " + m_path, slot.error);
    m_holding = slot.size > 0;
    return std::span<const unsigned char>(slot.bytes.data(), slot.size);
}

} // namespace px::digest
