#pragma once

#include "plist/Value.h"

#include <array>
#include <cstddef>
#include <string>

namespace px::cli {

struct ListName {
    const char* shortName;
    const char* menuKey;
};

const std::array<ListName, 5>& configLists();
const std::array<const char*, 12>& knownPreferences();

bool isPreferences(const std::string& name);
// The menu key for a list named by its short or full name; a UsageError for anything else.
std::string menuKeyOf(const std::string& name);
plist::Array storedList(const std::string& menuKey);
std::string entryName(const plist::Value& entry);
// The index of the first entry whose key or path is `key`; a UsageError when there is none.
std::size_t indexOfEntry(const plist::Array& list, const std::string& menuKey,
                         const std::string& key);
// A value typed on the command line: true/false, integers, reals, JSON arrays and objects;
// anything else is text. `type` forces one of string, bool, int, real, json.
plist::Value parseValueText(const std::string& text, const std::string& type);

} // namespace px::cli
