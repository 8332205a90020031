#include "config/KeyPath.h"

#include <algorithm>

namespace px::expand {

namespace {

std::vector<std::string> splitAt(std::string_view path, std::string_view separator) {
    if (separator.empty()) return {std::string(path)};
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (std::size_t at; (at = path.find(separator, start)) != std::string_view::npos;
         start = at + separator.size())
        parts.emplace_back(path.substr(start, at - start));
    parts.emplace_back(path.substr(start));
    return parts;
}

} // namespace

KeyPath::KeyPath(std::string_view path) {
    std::string slashed(path);
    std::ranges::replace(slashed, '.', '/');
    m_parts = splitAt(slashed, "/");
}

KeyPath::KeyPath(std::string_view path, Separator separator)
    : m_parts(splitAt(path, separator.text)) {}

bool KeyPath::hasKeys() const {
    return std::ranges::any_of(m_parts, [](const std::string& part) { return !part.empty(); });
}

} // namespace px::expand
