#include "archive/ParallelEncoder.h"

#include <algorithm>
#include <cerrno>
#include <chrono>

namespace px::archive {

namespace {

// How far the workers may run ahead of the writer in entries, so that a long list of tiny files
// holds few buffers.
constexpr std::size_t kEntriesAhead = 512;
constexpr auto kCancelPoll = std::chrono::milliseconds(20);

std::uint64_t piecesFor(std::uint64_t size, std::uint64_t pieceSize) {
    return size <= pieceSize ? 1 : (size + pieceSize - 1) / pieceSize;
}

} // namespace

ParallelEncoder::ParallelEncoder(std::vector<PendingEntry>& entries, Limits limits)
    : m_entries(entries), m_limits(limits), m_work(entries.size()), m_unreadPieces(entries.size()) {
    for (std::size_t index = 0; index < entries.size(); ++index) {
        Work& work = m_work[index];
        work.size = entries[index].source->size();
        work.pieceCount = piecesFor(work.size, m_limits.pieceSize);
        work.slots.resize(work.pieceCount);
        m_unreadPieces[index] = work.pieceCount;
    }
    for (unsigned worker = 0; worker < std::max(1u, m_limits.workers); ++worker)
        m_threads.emplace_back([this] { run(); });
}

ParallelEncoder::~ParallelEncoder() {
    stop();
    for (std::thread& thread : m_threads)
        thread.join();
}

void ParallelEncoder::stop() {
    std::lock_guard lock(m_mutex);
    m_stopping = true;
    m_workerWake.notify_all();
    m_writerWake.notify_all();
}

std::uint64_t ParallelEncoder::pieceCount(std::size_t entry) const {
    return m_work[entry].pieceCount;
}

void ParallelEncoder::run() {
    PieceEncoder encoder;
    std::unique_lock lock(m_mutex);
    PieceJob job;
    while (nextJob(lock, job)) {
        const std::uint64_t reserved = m_work[job.entry].slots[job.piece].heldBytes;
        lock.unlock();
        ErrorOr<EncodedPiece> result = encoder.encode(m_entries[job.entry], job);
        closeWhenRead(job.entry);
        lock.lock();
        finish(job, std::move(result), reserved);
    }
}

// The next piece in order, once the byte and entry limits allow it and, for a later piece of a
// large entry, once its first piece has decided how the entry is stored. A worker holding
// nothing may always take one piece, so a single piece larger than the limit still moves on.
std::optional<PieceJob> ParallelEncoder::readyJob() {
    while (m_nextEntry < m_work.size() && m_nextPiece >= m_work[m_nextEntry].pieceCount) {
        ++m_nextEntry;
        m_nextPiece = 0;
    }
    if (m_nextEntry >= m_work.size() || m_nextEntry >= m_takenEntries + kEntriesAhead) return {};
    Work& work = m_work[m_nextEntry];
    if (m_nextPiece > 0 && !work.stored) return {};
    const std::uint64_t reserve = std::min(work.size, m_limits.pieceSize);
    if (m_held > 0 && m_held + reserve > m_limits.heldBytes) return {};
    PieceJob job{m_nextEntry,        m_nextPiece, work.pieceCount,
                 m_limits.pieceSize, work.size,   work.stored.value_or(false)};
    work.slots[m_nextPiece].heldBytes = reserve;
    m_held += reserve;
    ++m_nextPiece;
    return job;
}

bool ParallelEncoder::nextJob(std::unique_lock<std::mutex>& lock, PieceJob& job) {
    for (;;) {
        if (m_stopping || m_failure) return false;
        if (auto ready = readyJob()) {
            job = *ready;
            return true;
        }
        if (m_nextEntry >= m_work.size()) return false;
        m_workerWake.wait(lock);
    }
}

void ParallelEncoder::finish(const PieceJob& job, ErrorOr<EncodedPiece> result,
                             std::uint64_t reserved) {
    Slot& slot = m_work[job.entry].slots[job.piece];
    m_held -= reserved;
    if (result.isError()) {
        if (!m_failure) m_failure = result.releaseError();
        slot.heldBytes = 0;
    } else {
        slot.piece = result.releaseValue();
        slot.heldBytes = slot.piece->bytes.capacity();
        m_held += slot.heldBytes;
        if (job.piece == 0) m_work[job.entry].stored = slot.piece->stored;
    }
    m_workerWake.notify_all();
    m_writerWake.notify_all();
}

// The source's file stays open until every piece of it has been read.
void ParallelEncoder::closeWhenRead(std::size_t entry) {
    bool last = false;
    {
        std::lock_guard lock(m_mutex);
        last = --m_unreadPieces[entry] == 0;
    }
    if (last) m_entries[entry].source->close();
}

ErrorOr<EncodedPiece> ParallelEncoder::take(std::size_t entry, std::uint64_t piece,
                                            const std::function<bool()>& cancelled) {
    std::unique_lock lock(m_mutex);
    Slot& slot = m_work[entry].slots[piece];
    for (;;) {
        if (m_failure) return *m_failure;
        if (m_stopping) return Error{"the archive was cancelled", ECANCELED};
        if (slot.piece) break;
        m_writerWake.wait_for(lock, kCancelPoll);
        if (!slot.piece && cancelled && cancelled()) {
            m_stopping = true;
            m_workerWake.notify_all();
            return Error{"the archive was cancelled", ECANCELED};
        }
    }
    EncodedPiece taken = std::move(*slot.piece);
    slot.piece.reset();
    m_held -= slot.heldBytes;
    slot.heldBytes = 0;
    if (piece + 1 == m_work[entry].pieceCount) m_takenEntries = entry + 1;
    m_workerWake.notify_all();
    return taken;
}

} // namespace px::archive
