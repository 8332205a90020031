#include "archive/PieceEncoder.h"

#include "archive/DeflateJoin.h"

#include <algorithm>
#include <cerrno>
#include <libdeflate.h>

namespace px::archive {

namespace {

// libdeflate's level 7 packs text about as tightly as zlib's level 9, in the time of its level 6.
constexpr int kLevel = 7;
constexpr std::uint64_t kSampleSize = 64 * 1024;

std::uint32_t crcOf(const std::vector<std::byte>& bytes) {
    return libdeflate_crc32(0, bytes.data(), bytes.size());
}

} // namespace

PieceEncoder::PieceEncoder() : m_deflater(kLevel) {}

// Exactly the bytes asked for: a file that got shorter since it was listed fails its entry
// rather than being packed half.
ErrorOr<std::vector<std::byte>> PieceEncoder::readPiece(PendingEntry& entry, std::uint64_t offset,
                                                        std::uint64_t length) {
    std::vector<std::byte> bytes(length);
    const std::size_t got = TRY(entry.source->readAt(offset, bytes));
    if (got != length)
        return Error{"the file for " + entry.name + " changed while it was packed", EIO};
    return bytes;
}

ErrorOr<EncodedPiece> PieceEncoder::encode(PendingEntry& entry, const PieceJob& job) {
    EncodedPiece piece;
    if (job.piece == 0) {
        TRY(entry.source->open());
        if (!entry.password.empty()) piece.keys = TRY(makeWinZipAesKeys(HmacSha1(entry.password)));
    }
    const std::uint64_t offset = job.piece * job.pieceSize;
    const std::uint64_t length = job.pieceCount == 1
                                     ? entry.source->size()
                                     : std::min(job.pieceSize, job.entrySize - offset);
    piece.bytes = TRY(readPiece(entry, offset, length));
    piece.crc = crcOf(piece.bytes);
    piece.rawSize = length;
    if (job.pieceCount == 1)
        compressWhole(piece);
    else
        TRY(compressPart(entry, job, piece));
    return piece;
}

// Stored unless deflating makes it smaller; an empty entry is stored.
void PieceEncoder::compressWhole(EncodedPiece& piece) {
    if (piece.bytes.empty()) {
        piece.stored = true;
        return;
    }
    m_scratch.resize(piece.bytes.size() - 1);
    const std::size_t packed = m_deflater.compress(piece.bytes, m_scratch);
    piece.stored = packed == 0;
    if (!piece.stored)
        piece.bytes = std::vector<std::byte>(m_scratch.begin(), m_scratch.begin() + packed);
}

// Whether a sample of the entry's data shrinks when deflated.
ErrorOr<bool> PieceEncoder::sampleShrinks(PendingEntry& entry, std::uint64_t offset) {
    std::vector<std::byte> sample = TRY(readPiece(entry, offset, kSampleSize));
    m_scratch.resize(kSampleSize - 1);
    return m_deflater.compress(sample, m_scratch) != 0;
}

// A large entry is stored when its first piece does not shrink and neither do samples taken
// further on: a file that starts with packed data may hold text after it.
ErrorOr<bool> PieceEncoder::storeLargeEntry(PendingEntry& entry, const PieceJob& job) {
    for (std::uint64_t sample = 1; sample <= 3; ++sample) {
        const std::uint64_t offset = (job.entrySize - kSampleSize) * sample / 3;
        if (TRY(sampleShrinks(entry, offset))) return false;
    }
    return true;
}

// The first piece decides whether the entry is stored, and the others follow it; every piece
// but the last is made joinable.
ErrorOr<void> PieceEncoder::compressPart(PendingEntry& entry, const PieceJob& job,
                                         EncodedPiece& piece) {
    if (job.piece > 0 && job.stored) return {};
    const bool first = job.piece == 0;
    m_scratch.resize(m_deflater.bound(piece.bytes.size()));
    std::size_t packed = m_deflater.compress(piece.bytes, m_scratch);
    if (first && packed >= piece.bytes.size()) {
        piece.stored = TRY(storeLargeEntry(entry, job));
        if (piece.stored) return {};
        m_scratch.resize(m_deflater.bound(piece.bytes.size()));
        packed = m_deflater.compress(piece.bytes, m_scratch);
    }
    if (packed == 0) return Error{"the deflate library failed", EIO};
    std::vector<std::byte> stream(m_scratch.begin(), m_scratch.begin() + packed);
    if (job.piece + 1 < job.pieceCount) TRY(makeJoinable(stream));
    piece.bytes = std::move(stream);
    return {};
}

} // namespace px::archive
