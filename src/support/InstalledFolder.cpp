#include "support/InstalledFolder.h"

#include <filesystem>

namespace px {

namespace {

std::filesystem::path programPrefix() {
    std::error_code failed;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", failed);
    if (failed) return {};
    return program.parent_path().parent_path();
}

} // namespace

std::string installedFolder(std::string_view relative) {
    static const std::filesystem::path prefix = programPrefix();
    if (prefix.empty()) return {};
    return (prefix / relative).string();
}

} // namespace px
