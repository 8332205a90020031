#pragma once

#include "support/ErrorOr.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace px::archive {

// The data of one archive entry. A source is opened once, read in pieces by offset (from several
// threads at once), and closed; it holds no open file before open().
class EntrySource {
  public:
    virtual ~EntrySource() = default;

    // The number of bytes the source holds: as recorded, and once opened, as found then.
    virtual std::uint64_t size() const = 0;
    virtual ErrorOr<void> open() = 0;
    // Fills the buffer from `offset` on; fewer bytes only at the end of the data.
    virtual ErrorOr<std::size_t> readAt(std::uint64_t offset, std::span<std::byte> buffer) = 0;
    virtual void close() = 0;
};

} // namespace px::archive
