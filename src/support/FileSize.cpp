#include "support/FileSize.h"

#include <filesystem>
#include <fmt/format.h>
#include <sys/stat.h>

namespace px::filehash {

namespace {

std::uint64_t ownSize(const std::string& path) {
    struct stat info {};
    if (::lstat(path.c_str(), &info) != 0 || S_ISDIR(info.st_mode)) return 0;
    return static_cast<std::uint64_t>(info.st_size);
}

std::uint64_t sizeOfFolderContents(const std::string& path) {
    namespace fs = std::filesystem;
    std::error_code error;
    fs::recursive_directory_iterator walk(path, fs::directory_options::skip_permission_denied,
                                          error);
    std::uint64_t total = 0;
    for (; !error && walk != fs::recursive_directory_iterator(); walk.increment(error))
        total += ownSize(walk->path().string());
    return total;
}

} // namespace

std::uint64_t fileSize(const std::string& path) {
    struct stat info {};
    if (path.empty() || ::lstat(path.c_str(), &info) != 0) return 0;
    return S_ISDIR(info.st_mode) ? sizeOfFolderContents(path)
                                 : static_cast<std::uint64_t>(info.st_size);
}

std::string fileSizeWithValue(std::uint64_t bytes) {
    static constexpr const char* kUnits[] = {"bytes", "KB", "MB", "GB", "TB"};
    // A value that would print as "1000.00" moves to the next unit instead.
    constexpr double kNextUnitAt = 999.995;
    double value = static_cast<double>(bytes);
    size_t unit = 0;
    for (; value >= kNextUnitAt && unit + 1 < std::size(kUnits); ++unit)
        value /= 1000.0;
    return fmt::format("{:4.2f} {}", value, kUnits[unit]);
}

} // namespace px::filehash
