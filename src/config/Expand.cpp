#include "config/Expand.h"

#include <cstdint>

namespace px::expand {

namespace {

using plist::Type;

Value walk(const Value& dict, const KeyPath& path) {
    if (!path.hasKeys() || !dict.isDictionary()) return {};
    Value current = dict;
    const auto& parts = path.parts();
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (parts[i].empty()) continue;
        Value found = current.get(parts[i]);
        if (!found) return {};
        if (path.isFinal(i)) return found;
        if (!found.isDictionary()) return {};
        current = found;
    }
    return current; // the path ended with a separator
}

bool readsAsTrue(const std::string& text) {
    if (text.empty()) return false;
    switch (text.front()) {
    case 'y':
    case 'Y':
    case 't':
    case 'T':
        return true;
    default:
        return text == "1";
    }
}

Value orElse(Value value, const Value& otherwise) {
    return value ? value : otherwise;
}

Value ofKind(const Value& value, Type type, bool mustBeMutable) {
    bool fits = value.is(type) && (!mustBeMutable || value.isMutable());
    return fits ? value : Value{};
}

} // namespace

Value objectAtPath(const Value& dict, std::string_view path) {
    return walk(dict, KeyPath(path));
}

Value objectAtPath(const Value& dict, std::string_view path, Separator separator) {
    return walk(dict, KeyPath(path, separator));
}

Value objectAtPath(const Value& dict, std::string_view path, const Value& otherwise) {
    return orElse(objectAtPath(dict, path), otherwise);
}

Value objectAtPath(const Value& dict, std::string_view path, const Value& otherwise,
                   Separator separator) {
    return orElse(objectAtPath(dict, path, separator), otherwise);
}

bool boolAtPath(const Value& dict, std::string_view path, bool otherwise) {
    Value value = objectAtPath(dict, path);
    if (value.isNull()) return false;
    if (value.isNumber()) return value.integer() != 0;
    if (value.isString()) return readsAsTrue(value.string());
    return otherwise;
}

Value numberAtPath(const Value& dict, std::string_view path, const Value& otherwise) {
    Value value = objectAtPath(dict, path);
    if (value.isNumber()) return value;
    if (value.isString()) return Value(leadingReal(value.string()));
    return otherwise;
}

std::optional<std::string> stringAtPath(const Value& dict, std::string_view path) {
    Value value = objectAtPath(dict, path);
    if (value.isString()) return value.string();
    if (value.isNumber()) return std::to_string(static_cast<std::int32_t>(value.integer()));
    return std::nullopt;
}

std::string stringAtPath(const Value& dict, std::string_view path, std::string otherwise) {
    auto text = stringAtPath(dict, path);
    return text ? std::move(*text) : std::move(otherwise);
}

Value arrayAtPath(const Value& dict, std::string_view path, const Value& otherwise) {
    return orElse(ofKind(objectAtPath(dict, path), Type::Array, false), otherwise);
}

Value mutableArrayAtPath(const Value& dict, std::string_view path, const Value& otherwise) {
    return orElse(ofKind(objectAtPath(dict, path), Type::Array, true), otherwise);
}

Value dictAtPath(const Value& dict, std::string_view path, const Value& otherwise) {
    return orElse(ofKind(objectAtPath(dict, path), Type::Dictionary, false), otherwise);
}

Value mutableDictAtPath(const Value& dict, std::string_view path, const Value& otherwise) {
    return orElse(ofKind(objectAtPath(dict, path), Type::Dictionary, true), otherwise);
}

Value objectOfAny(const Value& dict, const std::vector<std::string>& keys) {
    for (const auto& key : keys)
        if (Value value = dict.get(key)) return value;
    return {};
}

std::optional<std::string> stringOfAny(const Value& dict, const std::vector<std::string>& keys) {
    return asNSString(objectOfAny(dict, keys));
}

Value mutableDeepCopy(const Value& value) {
    if (!value.isDictionary()) return value.mutableCopy();
    plist::Dictionary entries;
    for (const auto& [key, item] : value.dictionary())
        entries.emplace(key, mutableDeepCopy(item));
    return Value::makeMutableDictionary(std::move(entries));
}

Appender append(const Value& dict) {
    return [dict](std::optional<std::string_view> path, const Value& value) {
        if (!path || !value || !dict.isDictionary()) return dict;
        Value target = dict.isMutable() ? dict : dict.mutableCopy();
        setObjectAtPath(target, value, *path);
        return target;
    };
}

} // namespace px::expand
