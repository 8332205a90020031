#pragma once

#include "archive/WinZipAesKeys.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace px::archive {

// One piece of an entry's data, ready for the archive: deflated or stored as the entry is, not
// yet encrypted. The first piece of an entry also says how the entry is stored and, for an
// encrypted entry, carries its keys.
struct EncodedPiece {
    std::vector<std::byte> bytes;
    std::uint32_t crc = 0;     // of the piece's original bytes
    std::uint64_t rawSize = 0; // the number of original bytes
    bool stored = false;       // the entry is stored (first piece only)
    std::optional<WinZipAesKeys> keys;
};

} // namespace px::archive
