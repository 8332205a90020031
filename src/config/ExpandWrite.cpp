#include "config/Expand.h"

namespace px::expand {

namespace {

// The mutable dictionary to continue a write in under `key`, made or copied as needed; nothing
// when the key holds something that is not a dictionary.
Value stepForWriting(const Value& dict, const std::string& key) {
    Value next = dict.get(key);
    if (next.isDictionary() && next.isMutable()) return next;
    if (next && !next.isDictionary()) return {};
    next = next ? next.mutableCopy() : Value::makeMutableDictionary();
    dict.set(key, next);
    return next;
}

bool store(const Value& dict, const Value& value, std::string_view path, const KeyPath& keyPath) {
    if (path.empty() || !value || !dict.isDictionary() || !dict.isMutable()) return false;
    if (!keyPath.hasKeys()) return dict.set(std::string(path), value);
    Value current = dict;
    const auto& parts = keyPath.parts();
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (parts[i].empty()) continue;
        if (keyPath.isFinal(i)) return current.set(parts[i], value);
        current = stepForWriting(current, parts[i]);
        if (!current) return false;
    }
    return true; // the path ended with a separator
}

} // namespace

bool setObjectAtPath(const Value& dict, const Value& value, std::string_view path) {
    return store(dict, value, path, KeyPath(path));
}

bool setObjectAtPath(const Value& dict, const Value& value, std::string_view path,
                     Separator separator) {
    return store(dict, value, path, KeyPath(path, separator));
}

Appender APPEND(const Value& dict) {
    return [dict](std::optional<std::string_view> path, const Value& value) {
        if (path && value) setObjectAtPath(dict, value, *path);
        return dict;
    };
}

std::optional<std::string>
stringOfAnyRemoveAll(const Value& dict, const std::vector<std::string>& keys, bool removeAll) {
    auto text = stringOfAny(dict, keys);
    if (removeAll)
        for (const auto& key : keys)
            dict.remove(key);
    return text;
}

Value keyValues(const std::vector<Value>& pathsAndValues) {
    Value dict = Value::makeMutableDictionary();
    for (std::size_t i = 0; i + 1 < pathsAndValues.size(); i += 2) {
        const Value& path = pathsAndValues[i];
        const Value& value = pathsAndValues[i + 1];
        if (!path.isString() || !value) break;
        setObjectAtPath(dict, value, path.string());
    }
    return dict;
}

Value nonRetainingDictionary() {
    return Value::makeMutableDictionary();
}

} // namespace px::expand
