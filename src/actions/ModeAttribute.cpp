#include "actions/ModeAttribute.h"

#include <array>
#include <cerrno>
#include <fmt/format.h>
#include <sys/xattr.h>

namespace px::modeattr {

namespace {
constexpr unsigned kAllModeBits = 07777;
constexpr std::size_t kMaxDigits = 6;
} // namespace

std::string encode(unsigned mode) {
    return fmt::format("{:04o}", mode & kAllModeBits);
}

std::optional<unsigned> decode(std::string_view text) {
    if (text.empty() || text.size() > kMaxDigits) return std::nullopt;
    unsigned mode = 0;
    for (char digit : text) {
        if (digit < '0' || digit > '7') return std::nullopt;
        mode = mode * 8 + static_cast<unsigned>(digit - '0');
    }
    if (mode > kAllModeBits) return std::nullopt;
    return mode;
}

ErrorOr<void> save(const std::string& path, unsigned mode) {
    const std::string text = encode(mode);
    if (::setxattr(path.c_str(), kName, text.data(), text.size(), 0) != 0)
        return Error::fromErrno("cannot keep the permissions of " + path, errno);
    return {};
}

std::optional<unsigned> load(const std::string& path) {
    std::array<char, 16> buffer{};
    ssize_t size = ::getxattr(path.c_str(), kName, buffer.data(), buffer.size());
    if (size <= 0) return std::nullopt;
    return decode(std::string_view(buffer.data(), static_cast<std::size_t>(size)));
}

void forget(const std::string& path) {
    ::removexattr(path.c_str(), kName);
}

} // namespace px::modeattr
