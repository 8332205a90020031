#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

// Zip archives as readers independent of libzip see them: Python's zipfile and 7-Zip.
namespace px::test {

// One entry of the central directory.
struct ZipEntry {
    std::string name;
    int flagBits = 0;
    int compressType = 0; // 0 stored, 8 deflate, 99 WinZip AES
    std::int64_t compressSize = 0;
    std::int64_t fileSize = 0;
    std::uint32_t externalAttr = 0;
    int createSystem = 0;             // 3 for Unix
    std::array<int, 6> dateTime = {}; // year, month, day, hour, minute, second
    int aesStrength = 0;              // 1, 2, 3 for 128, 192, 256-bit WinZip AES; 0 without
    bool encrypted() const { return flagBits & 1; }
};

// Every entry in the order of the central directory; none (and a test failure) when Python
// cannot read the archive.
std::vector<ZipEntry> zipEntries(const std::string& archive);
std::vector<std::string> zipEntryNames(const std::string& archive);

// The 7-Zip command of this machine ("7zz" or "7z"); empty when neither is installed.
std::string sevenZip();

// Names of everything in the folder, recursively, relative to it, sorted; folders end in "/".
std::vector<std::string> treeOf(const std::string& folder);

} // namespace px::test
