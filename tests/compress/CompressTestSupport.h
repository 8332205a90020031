#pragma once

#include "support_files/TestSupport.h"

#include <string>
#include <vector>

namespace px::test {

// One entry as a zip reader independent of libzip (Python's zipfile) sees it.
struct ZipEntry {
    std::string name;
    bool encrypted = false;
    int aesStrength = 0; // 3 for WinZip AES-256, 0 without AES
};

std::vector<ZipEntry> zipEntries(const std::string& archive);
std::vector<std::string> entryNames(const std::string& archive);

// "7zz" or "7z"; empty when neither is installed.
std::string sevenZip();
// Extracts the archive into the folder with 7-Zip, giving the password (also when empty, so
// that 7-Zip never waits for one).
ProcessResult extractWithSevenZip(const std::string& archive, const std::string& folder,
                                  const std::string& password);

// Everything in the folder, recursively, relative to it, sorted; folders end in "/".
std::vector<std::string> treeOf(const std::string& folder);
// A file of `size` random bytes (hard to compress), written at the path.
void writeRandomFile(const std::string& path, std::size_t size);
// A named pipe at the path: it cannot be packed as a file.
void makeFifo(const std::string& path);

} // namespace px::test
