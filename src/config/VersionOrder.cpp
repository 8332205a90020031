#include "config/PXDefaultData.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace px {

namespace {

// The leading integer value of a component, as a string's integer value is read.
std::int64_t componentValue(std::string_view component) {
    std::string text(component);
    return std::strtoll(text.c_str(), nullptr, 10);
}

std::vector<std::int64_t> components(std::string_view version) {
    std::vector<std::int64_t> values;
    for (std::size_t start = 0;;) {
        std::size_t dot = version.find('.', start);
        values.push_back(componentValue(version.substr(start, dot - start)));
        if (dot == std::string_view::npos) return values;
        start = dot + 1;
    }
}

} // namespace

VersionOrder compareVersion(std::string_view receiver, std::string_view other) {
    auto left = components(receiver), right = components(other);
    std::size_t count = std::max(left.size(), right.size());
    for (std::size_t i = 0; i < count; ++i) {
        std::int64_t a = i < left.size() ? left[i] : 0, b = i < right.size() ? right[i] : 0;
        if (a != b) return a < b ? VersionOrder::Ascending : VersionOrder::Descending;
    }
    return VersionOrder::Same;
}

} // namespace px
