#pragma once

#include <cstdint>
#include <string>

namespace px::archive {

// Everything the headers say about one entry.
struct ZipRecord {
    std::string name;
    bool deflated = false; // stored otherwise
    bool aes = false;      // WinZip AES-256 around the data
    std::uint16_t dosTime = 0;
    std::uint16_t dosDate = 0;
    std::uint32_t crc = 0;
    std::uint64_t compressedSize = 0; // with the AES salt, check and code
    std::uint64_t size = 0;
    std::uint32_t externalAttributes = 0;
    std::uint64_t offset = 0; // of the local header
    bool zip64Local = false;  // the local header carries 64-bit sizes

    static constexpr std::uint64_t kAesOverhead = 16 + 2 + 10;
};

} // namespace px::archive
