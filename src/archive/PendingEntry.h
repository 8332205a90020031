#pragma once

#include "archive/EntrySource.h"

#include <cstdint>
#include <memory>
#include <string>

namespace px::archive {

// An entry recorded for the archive, written when the archive is closed.
struct PendingEntry {
    std::string name;
    std::unique_ptr<EntrySource> source;
    std::string password; // empty: not encrypted; otherwise WinZip AES-256
    std::uint16_t dosTime = 0;
    std::uint16_t dosDate = 0;
    std::uint32_t externalAttributes = 0; // Unix type and permission bits in the upper 16 bits
};

} // namespace px::archive
