#include "plist/ItemFields.h"

namespace px::fields {

std::string string(const plist::Value& entry, std::string_view field) {
    plist::Value value = entry.get(field);
    return value.isString() ? value.string() : std::string{};
}

bool stringIsTrue(std::string_view text) {
    std::size_t i = text.find_first_not_of(" \t\r\n");
    if (i == std::string_view::npos) return false;
    if (text[i] == 'Y' || text[i] == 'y' || text[i] == 'T' || text[i] == 't') return true;
    if (text[i] == '+' || text[i] == '-') ++i;
    while (i < text.size() && text[i] == '0')
        ++i;
    return i < text.size() && text[i] >= '1' && text[i] <= '9';
}

bool flag(const plist::Value& entry, std::string_view field) {
    plist::Value value = entry.get(field);
    if (value.isNumber()) return value.boolean();
    if (value.isString()) return stringIsTrue(value.string());
    return false;
}

std::vector<std::string> strings(const plist::Value& entry, std::string_view field) {
    plist::Value value = entry.get(field);
    std::vector<std::string> result;
    if (!value.isArray()) return result;
    for (const auto& item : value.array())
        if (item.isString()) result.push_back(item.string());
    return result;
}

} // namespace px::fields
