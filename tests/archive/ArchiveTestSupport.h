#pragma once

#include "support_files/TestSupport.h"
#include "support_files/ZipListing.h"

#include <cstdint>
#include <ctime>
#include <string>
#include <sys/types.h>

namespace px::test {

// Creates the file (and its folders) with these bytes and mode.
void writeFile(const std::string& path, const std::string& bytes, mode_t mode = 0644);
void setModificationTime(const std::string& path, std::time_t time);
std::string randomBytes(std::size_t count, unsigned seed);

} // namespace px::test
