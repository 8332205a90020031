#pragma once

#include "support/ErrorOr.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace px::archive {

// The data of one archive entry, pulled by the archive writer when it writes that entry. A source
// is opened once, read until it returns 0, and closed; it holds no open file before open().
class EntrySource {
  public:
    virtual ~EntrySource() = default;

    // The number of bytes the source expects to give (it decides whether the entry needs Zip64).
    virtual std::uint64_t size() const = 0;
    virtual ErrorOr<void> open() = 0;
    // Fills at most `buffer.size()` bytes; 0 means the end of the data.
    virtual ErrorOr<std::size_t> read(std::span<std::byte> buffer) = 0;
    virtual void close() = 0;
};

} // namespace px::archive
