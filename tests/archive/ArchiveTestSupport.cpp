#include "ArchiveTestSupport.h"

#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <random>
#include <sys/stat.h>

namespace px::test {

void writeFile(const std::string& path, const std::string& bytes, mode_t mode) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
    ::chmod(path.c_str(), mode);
}

void setModificationTime(const std::string& path, std::time_t time) {
    timespec times[2] = {{time, 0}, {time, 0}};
    ::utimensat(AT_FDCWD, path.c_str(), times, 0);
}

std::string randomBytes(std::size_t count, unsigned seed) {
    std::mt19937 random(seed);
    std::string bytes(count, '\0');
    for (auto& byte : bytes)
        byte = static_cast<char>(random());
    return bytes;
}

} // namespace px::test
