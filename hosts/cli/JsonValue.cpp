#include "JsonValue.h"

#include <cmath>
#include <ctime>
#include <glib.h>

namespace px::cli {

namespace {

std::string isoDate(double seconds) {
    std::time_t whole = static_cast<std::time_t>(std::floor(seconds));
    std::tm parts{};
    ::gmtime_r(&whole, &parts);
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &parts);
    return text;
}

std::string base64(const plist::Bytes& bytes) {
    gchar* encoded = g_base64_encode(bytes.data(), bytes.size());
    std::string text(encoded);
    g_free(encoded);
    return text;
}

} // namespace

nlohmann::json toJson(const plist::Value& value) {
    if (!value || value.isNull()) return nullptr;
    switch (value.type()) {
    case plist::Type::Boolean:
        return value.boolean();
    case plist::Type::Integer:
        return value.integer();
    case plist::Type::Real:
        return value.real();
    case plist::Type::String:
        return value.string();
    case plist::Type::Date:
        return isoDate(value.dateSeconds());
    case plist::Type::Data:
        return base64(value.data());
    case plist::Type::Array: {
        auto array = nlohmann::json::array();
        for (const auto& item : value.array())
            array.push_back(toJson(item));
        return array;
    }
    default: {
        auto object = nlohmann::json::object();
        for (const auto& [key, item] : value.dictionary())
            object[key] = toJson(item);
        return object;
    }
    }
}

plist::Value fromJson(const nlohmann::json& json) {
    if (json.is_boolean()) return plist::Value(json.get<bool>());
    if (json.is_number_integer()) return plist::Value(json.get<std::int64_t>());
    if (json.is_number()) return plist::Value(json.get<double>());
    if (json.is_string()) return plist::Value(json.get<std::string>());
    if (json.is_array()) {
        plist::Array items;
        for (const auto& item : json)
            items.push_back(fromJson(item));
        return plist::Value::makeArray(std::move(items));
    }
    if (json.is_object()) {
        plist::Dictionary entries;
        for (const auto& [key, item] : json.items())
            entries.insert_or_assign(key, fromJson(item));
        return plist::Value::makeDictionary(std::move(entries));
    }
    return plist::Value::null();
}

} // namespace px::cli
