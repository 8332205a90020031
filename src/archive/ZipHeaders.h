#pragma once

#include "archive/ZipRecord.h"

#include <cstdint>
#include <string>

// The byte layout of zip headers, as libzip lays them out: Unix host, version 6.3, the UTF-8
// flag only for names that need it, WinZip AES-256 (vendor version 2) with no CRC for entries
// under 20 bytes, and Zip64 records only where a field overflows.
namespace px::archive::headers {

// Whether the local header must carry 64-bit sizes, decided before the data is written.
bool needsZip64Local(std::uint64_t size, bool deflated, bool aes);

void appendLocalHeader(std::string& out, const ZipRecord& record);
void appendCentralHeader(std::string& out, const ZipRecord& record);
void appendEnd(std::string& out, std::uint64_t entries, std::uint64_t directoryOffset,
               std::uint64_t directorySize);

// Where the CRC and the two sizes sit in a local header, for patching them once known.
constexpr std::uint64_t kLocalCrcOffset = 14;

} // namespace px::archive::headers
