#include "platform/Settings.h"

#include "plist/ItemFields.h"

#include <cstdio>
#include <cstdlib>
#include <limits>

namespace px::platform {

bool Settings::boolForKey(std::string_view key) {
    plist::Value value = objectForKey(key);
    if (value.isNumber()) return value.boolean();
    if (value.isString()) return fields::stringIsTrue(value.string());
    return false;
}

std::int64_t Settings::integerForKey(std::string_view key) {
    plist::Value value = objectForKey(key);
    if (value.isNumber()) return value.integer();
    if (value.isString()) return std::strtoll(value.string().c_str(), nullptr, 10);
    return 0;
}

std::optional<std::string> Settings::stringForKey(std::string_view key) {
    plist::Value value = objectForKey(key);
    if (value.isString()) return value.string();
    if (value.isNumber()) return value.description();
    return std::nullopt;
}

plist::Value Settings::arrayForKey(std::string_view key) {
    plist::Value value = objectForKey(key);
    return value.isArray() ? value : plist::Value{};
}

plist::Value Settings::dictionaryForKey(std::string_view key) {
    plist::Value value = objectForKey(key);
    return value.isDictionary() ? value : plist::Value{};
}

std::int64_t Settings::increment(const std::string& key) {
    std::int64_t result = 0;
    modify(key, [&](const plist::Value& old) {
        // A counter stays at the largest integer rather than wrapping to a negative one.
        const std::int64_t count = old.isNumber() ? old.integer() : 0;
        result = count == std::numeric_limits<std::int64_t>::max() ? count : count + 1;
        return plist::Value(result);
    });
    return result;
}

std::optional<std::string> Settings::keepDamagedCopy(const std::string& why) {
    std::fprintf(stderr, "pxmenu: the settings are damaged (%s); using the factory settings\n",
                 why.c_str());
    return std::nullopt;
}

} // namespace px::platform
