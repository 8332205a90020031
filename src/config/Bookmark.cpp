#include "config/Bookmark.h"

#include <algorithm>
#include <sys/stat.h>

namespace px::bookmark {

namespace {

bool exists(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0;
}

} // namespace

std::optional<plist::Value> create(const std::string& path) {
    if (!path.starts_with('/') || path.find('\0') != std::string::npos || !exists(path))
        return std::nullopt;
    return plist::Value::makeData(plist::Bytes(path.begin(), path.end()));
}

std::optional<Resolution> resolve(const plist::Value& bookmark) {
    if (!bookmark.isData()) return std::nullopt;
    const plist::Bytes& bytes = bookmark.data();
    if (bytes.empty() || bytes.front() != '/' || std::ranges::count(bytes, 0) > 0)
        return std::nullopt;
    std::string path(bytes.begin(), bytes.end());
    return Resolution{path, !exists(path)};
}

bool startAccessing(const std::string&) {
    return true;
}

} // namespace px::bookmark
