#include "support/StandardPath.h"

#include "support/Xdg.h"

#include <vector>

namespace px {

namespace {

std::string expandTilde(std::string_view path) {
    if (path == "~" || path.starts_with("~/"))
        return xdg::homeDirectory() + std::string(path.substr(1));
    return std::string(path);
}

std::vector<std::string_view> resolvedComponents(std::string_view path, bool absolute) {
    std::vector<std::string_view> parts;
    for (std::size_t start = 0; start <= path.size();) {
        std::size_t end = path.find('/', start);
        if (end == std::string_view::npos) end = path.size();
        std::string_view part = path.substr(start, end - start);
        start = end + 1;
        if (part.empty() || part == ".") continue;
        if (part == ".." && !parts.empty() && parts.back() != "..")
            parts.pop_back();
        else if (part != ".." || !absolute)
            parts.push_back(part);
    }
    return parts;
}

} // namespace

std::string standardizePath(std::string_view input) {
    std::string path = expandTilde(input);
    if (path.empty()) return path;
    bool absolute = path.front() == '/';
    std::string result = absolute ? "/" : "";
    for (auto part : resolvedComponents(path, absolute)) {
        if (!result.empty() && result.back() != '/') result += '/';
        result += part;
    }
    return result.empty() ? "." : result;
}

} // namespace px
