#pragma once

#include <cstdint>
#include <string>

namespace px::filehash {

// The bytes held at the path: a file's size, or for a folder the sum over every entry found
// by walking it (symbolic links are not followed and count as their own size; folders add
// nothing of their own). 0 when nothing is there.
std::uint64_t fileSize(const std::string& path);
// "%4.2f %@": the byte count in the largest decimal unit (1000-based: "bytes", "KB", "MB",
// "GB", "TB") that keeps the value at 1 or more ("512.00 bytes", "1.50 MB").
std::string fileSizeWithValue(std::uint64_t bytes);

} // namespace px::filehash
