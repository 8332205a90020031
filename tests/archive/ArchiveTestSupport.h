#pragma once

#include "support_files/TestSupport.h"

#include <cstdint>
#include <ctime>
#include <nlohmann/json.hpp>
#include <string>
#include <sys/types.h>
#include <vector>

namespace px::test {

// The 7-Zip command of this machine ("7zz" or "7z"); empty when neither is installed.
std::string sevenZip();

// Creates the file (and its folders) with these bytes and mode.
void writeFile(const std::string& path, const std::string& bytes, mode_t mode = 0644);
void setModificationTime(const std::string& path, std::time_t time);
std::string randomBytes(std::size_t count, unsigned seed);
// Names of everything in the folder, recursively, relative to it; folders end in "/".
std::vector<std::string> treeOf(const std::string& folder);

// The central directory as a zip reader independent of libzip (Python's zipfile) sees it: one
// object per entry with name, flag_bits, compress_type, compress_size, file_size,
// external_attr, create_system, date_time ([y, m, d, h, min, s]) and aes_strength (1, 2, 3 for
// 128, 192, 256-bit WinZip AES; 0 without).
nlohmann::json listEntries(const std::string& archive);
// The raw deflate size of `path`'s bytes at `level`, computed with the reference zlib.
std::int64_t deflatedSize(const std::string& path, int level);

} // namespace px::test
