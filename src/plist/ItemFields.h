#pragma once

#include "plist/Value.h"

#include <string>
#include <string_view>
#include <vector>

// Loose readers of one field of a stored item dictionary: wrong-typed values read as absent.
namespace px::fields {

std::string string(const plist::Value& entry, std::string_view field);
// The stored flag converted as the defaults system converts a value to a boolean.
bool flag(const plist::Value& entry, std::string_view field);
std::vector<std::string> strings(const plist::Value& entry, std::string_view field);
bool stringIsTrue(std::string_view text);

} // namespace px::fields
