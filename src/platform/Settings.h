#pragma once

#include "plist/Value.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace px::platform {

// A key-value settings suite: the shared suite of the menus and preferences, or the
// extension's own standard defaults. Values are property-list values; reads of a missing key
// give nothing. Implementations may be shared between threads.
class Settings {
  public:
    virtual ~Settings() = default;

    virtual plist::Value objectForKey(std::string_view key) = 0;
    // Stores a value; storing nothing removes the key.
    virtual void setObject(const std::string& key, plist::Value value) = 0;
    // Reads, changes and writes one key as one step, so concurrent writers lose nothing.
    virtual void modify(const std::string& key,
                        const std::function<plist::Value(const plist::Value&)>& change) = 0;

    void removeObject(const std::string& key) { setObject(key, {}); }
    // Keeps a copy of the stored settings beside them before a damaged part is replaced, and
    // reports once why; answers where the copy is, when there is one.
    virtual std::optional<std::string> keepDamagedCopy(const std::string& why);

    // Typed readers with the usual defaults conventions: numbers and "YES"/"true"/"1"-like
    // strings convert, anything else reads as false, 0 or nothing.
    bool boolForKey(std::string_view key);
    std::int64_t integerForKey(std::string_view key);
    std::optional<std::string> stringForKey(std::string_view key);
    plist::Value arrayForKey(std::string_view key);
    plist::Value dictionaryForKey(std::string_view key);

    void setBool(const std::string& key, bool value) { setObject(key, plist::Value(value)); }
    void setInteger(const std::string& key, std::int64_t value) {
        setObject(key, plist::Value(value));
    }
    void setString(const std::string& key, std::string value) {
        setObject(key, plist::Value(std::move(value)));
    }
    // Adds one to the integer under the key and answers the new value; the largest integer
    // stays as it is.
    std::int64_t increment(const std::string& key);
};

} // namespace px::platform
