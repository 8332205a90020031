#include "archive/PieceEncoder.h"

#include <algorithm>
#include <cerrno>
#include <libdeflate.h>

namespace px::archive {

namespace {

constexpr int kLevel = 6;
constexpr std::uint64_t kWindow = 32 * 1024;

std::uint32_t crcOf(const std::vector<std::byte>& bytes) {
    return libdeflate_crc32(0, bytes.data(), bytes.size());
}

} // namespace

PieceEncoder::PieceEncoder() : m_whole(kLevel), m_chunk(kLevel) {}

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
    const std::size_t packed = m_whole.compress(piece.bytes, m_scratch);
    piece.stored = packed == 0;
    if (!piece.stored)
        piece.bytes = std::vector<std::byte>(m_scratch.begin(), m_scratch.begin() + packed);
}

ErrorOr<void> PieceEncoder::compressPart(PendingEntry& entry, const PieceJob& job,
                                         EncodedPiece& piece) {
    if (job.piece > 0 && job.stored) return {};
    std::vector<std::byte> dictionary;
    if (job.piece > 0) {
        const std::uint64_t start = job.piece * job.pieceSize;
        dictionary = TRY(readPiece(entry, start - kWindow, kWindow));
    }
    const bool last = job.piece + 1 == job.pieceCount;
    TRY(m_chunk.compress(dictionary, piece.bytes, last, m_scratch));
    if (job.piece == 0) {
        piece.stored = m_scratch.size() >= piece.bytes.size();
        if (piece.stored) return {};
    }
    piece.bytes = std::vector<std::byte>(m_scratch.begin(), m_scratch.end());
    return {};
}

} // namespace px::archive
