#pragma once

#include "support/ErrorOr.h"

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <span>
#include <string>
#include <thread>
#include <vector>

namespace px::digest {

// Reads a file descriptor sequentially on a thread of its own into a small ring of fixed
// buffers, so that reading the next chunk overlaps the work done on the current one. Memory
// stays at depth x bufferSize whatever the file's size.
class ReadAhead {
  public:
    ReadAhead(int fd, std::string path, std::size_t bufferSize, std::size_t depth);
    ~ReadAhead();
    ReadAhead(const ReadAhead&) = delete;
    ReadAhead& operator=(const ReadAhead&) = delete;

    // The next chunk, valid until the following call; empty at the end of the file.
    ErrorOr<std::span<const unsigned char>> next();

  private:
    struct Slot {
        std::vector<unsigned char> bytes;
        std::size_t size = 0;
        int error = 0;
    };

    void run();
    bool fill(Slot& slot);
    void releaseHeld();

    int m_fd;
    std::string m_path;
    std::vector<Slot> m_slots;
    std::size_t m_filled = 0;
    std::size_t m_readIndex = 0;
    bool m_holding = false;
    bool m_stop = false;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::thread m_thread;
};

} // namespace px::digest
