#pragma once

#include "archive/EncodedPiece.h"
#include "archive/PendingEntry.h"
#include "archive/PieceEncoder.h"
#include "support/ErrorOr.h"

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace px::archive {

// Compresses the entries on worker threads, in entry order and ahead of the one thread that
// takes the pieces and writes them. What the workers hold (pieces read, being compressed, or
// done and not yet taken) stays under a byte limit whatever the entry sizes: a large entry is
// cut into pieces, and a worker waits while the limit is reached. The first failure of any
// piece fails every later take; stop() (also on destruction) ends the workers after their
// current piece.
class ParallelEncoder {
  public:
    struct Limits {
        unsigned workers = 2;
        std::uint64_t pieceSize = 1 << 20; // a worker stops within one piece of a cancel
        std::uint64_t heldBytes = 24 << 20;
    };

    ParallelEncoder(std::vector<PendingEntry>& entries, Limits limits);
    ~ParallelEncoder();
    ParallelEncoder(const ParallelEncoder&) = delete;
    ParallelEncoder& operator=(const ParallelEncoder&) = delete;

    std::uint64_t pieceCount(std::size_t entry) const;

    // Waits for the piece, asking `cancelled` every few milliseconds; fails with ECANCELED once
    // it answers true, or with the first failure of any worker. Pieces are taken in order.
    ErrorOr<EncodedPiece> take(std::size_t entry, std::uint64_t piece,
                               const std::function<bool()>& cancelled);

    void stop();

  private:
    struct Slot {
        std::optional<EncodedPiece> piece;
        std::uint64_t heldBytes = 0;
    };
    struct Work {
        std::uint64_t pieceCount = 1;
        std::uint64_t size = 0;
        std::optional<bool> stored; // known once the first piece is done
        std::vector<Slot> slots;
    };

    void run();
    bool nextJob(std::unique_lock<std::mutex>& lock, PieceJob& job);
    std::optional<PieceJob> readyJob();
    void finish(const PieceJob& job, ErrorOr<EncodedPiece> result, std::uint64_t reserved);
    void closeWhenRead(std::size_t entry);

    std::vector<PendingEntry>& m_entries;
    Limits m_limits;
    std::vector<Work> m_work;
    std::vector<std::uint64_t> m_unreadPieces;

    mutable std::mutex m_mutex;
    std::condition_variable m_workerWake;
    std::condition_variable m_writerWake;
    std::size_t m_nextEntry = 0;
    std::uint64_t m_nextPiece = 0;
    std::size_t m_takenEntries = 0;
    std::uint64_t m_held = 0;
    bool m_stopping = false;
    std::optional<Error> m_failure;
    std::vector<std::thread> m_threads;
};

} // namespace px::archive
