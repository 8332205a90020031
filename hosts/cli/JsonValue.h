#pragma once

#include "plist/Value.h"

#include <nlohmann/json.hpp>

namespace px::cli {

// Property-list values as JSON: data becomes base64 text, dates ISO 8601 text in UTC.
nlohmann::json toJson(const plist::Value& value);
// JSON as property-list values; null becomes the null value.
plist::Value fromJson(const nlohmann::json& json);

} // namespace px::cli
