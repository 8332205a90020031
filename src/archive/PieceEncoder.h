#pragma once

#include "archive/EncodedPiece.h"
#include "archive/PendingEntry.h"
#include "archive/WholeDeflater.h"
#include "support/ErrorOr.h"

#include <cstddef>
#include <cstdint>

namespace px::archive {

// Which piece of which entry to encode. An entry of at most `pieceSize` bytes is one piece; a
// larger one is cut into pieces of `pieceSize` bytes, compressed apart into streams that join
// into one, and the first piece (with samples further on) decides for all whether the entry is
// stored.
struct PieceJob {
    std::size_t entry = 0;
    std::uint64_t piece = 0;
    std::uint64_t pieceCount = 1;
    std::uint64_t pieceSize = 0;
    std::uint64_t entrySize = 0; // as recorded; a one-piece entry takes the size found on opening
    bool stored = false;         // for pieces after the first: what the first decided
};

// The compressing part of one worker thread: reads a piece, checks it, compresses it, and for
// an entry's first piece opens the source and derives the encryption keys. Entries whose data
// does not shrink are stored.
class PieceEncoder {
  public:
    PieceEncoder();

    ErrorOr<EncodedPiece> encode(PendingEntry& entry, const PieceJob& job);

  private:
    ErrorOr<std::vector<std::byte>> readPiece(PendingEntry& entry, std::uint64_t offset,
                                              std::uint64_t length);
    void compressWhole(EncodedPiece& piece);
    ErrorOr<void> compressPart(PendingEntry& entry, const PieceJob& job, EncodedPiece& piece);
    ErrorOr<bool> storeLargeEntry(PendingEntry& entry, const PieceJob& job);
    ErrorOr<bool> sampleShrinks(PendingEntry& entry, std::uint64_t offset);

    WholeDeflater m_deflater;
    std::vector<std::byte> m_scratch;
};

} // namespace px::archive
