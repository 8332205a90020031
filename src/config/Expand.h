#pragma once

#include "config/Coercions.h"
#include "config/KeyPath.h"
#include "config/Value.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Keyed-path access to nested property-list dictionaries: reading a value at a path such as
// "menu.items/first" with a typed fallback, writing at a path with the dictionaries on the way
// made on demand, and building dictionaries from path-value lists. Paths follow KeyPath.
// Functions that read take any value as the dictionary and read nothing from a non-dictionary.
namespace px::expand {

using plist::Value;

// --- Reading --------------------------------------------------------------------------------

// The value at a path as it is stored (a null value included), or nothing. A path that ends
// with a separator names the dictionary reached last.
Value objectAtPath(const Value& dict, std::string_view path);
Value objectAtPath(const Value& dict, std::string_view path, Separator separator);
// The same, or `otherwise` when there is nothing.
Value objectAtPath(const Value& dict, std::string_view path, const Value& otherwise);
Value objectAtPath(const Value& dict, std::string_view path, const Value& otherwise,
                   Separator separator);

// Null reads as false; a number as its integer part not being 0; a string as true when it
// begins with "y", "Y", "t" or "T" or is "1"; anything else, nothing included, as `otherwise`.
bool boolAtPath(const Value& dict, std::string_view path, bool otherwise = false);
// A number as it is; a string by its floating-point value ("3.5" gives 3.5); null and other
// kinds give `otherwise`.
Value numberAtPath(const Value& dict, std::string_view path, const Value& otherwise = {});
// A string as it is; a number as its value cut to a 32-bit integer in decimal (3.9 gives "3");
// null and other kinds give nothing, or `otherwise` in the second form.
std::optional<std::string> stringAtPath(const Value& dict, std::string_view path);
std::string stringAtPath(const Value& dict, std::string_view path, std::string otherwise);
// The value when it is of the named kind, else `otherwise`.
Value arrayAtPath(const Value& dict, std::string_view path, const Value& otherwise = {});
Value mutableArrayAtPath(const Value& dict, std::string_view path, const Value& otherwise = {});
Value dictAtPath(const Value& dict, std::string_view path, const Value& otherwise = {});
Value mutableDictAtPath(const Value& dict, std::string_view path, const Value& otherwise = {});

// The value of the first listed key that is present (plain keys, not paths), null included.
Value objectOfAny(const Value& dict, const std::vector<std::string>& keys);
// The same through asNSString.
std::optional<std::string> stringOfAny(const Value& dict, const std::vector<std::string>& keys);

// A mutable copy of a dictionary in which nested dictionaries are deep-copied the same way and
// arrays become mutable copies (sharing their items); other values are immutable and shared.
// An array gives a mutable copy of itself, anything else itself.
Value mutableDeepCopy(const Value& value);

// A writer of (path, value) bound to `dict`. A missing path or value writes nothing and gives
// `dict` back. Otherwise a mutable dictionary is written in place and given back; an immutable
// one is left untouched: each call writes into a new mutable copy and gives that back.
using Appender = std::function<Value(std::optional<std::string_view> path, const Value& value)>;
Appender append(const Value& dict);

// --- Writing (into mutable dictionaries) ----------------------------------------------------

// Stores `value` at a path, making a mutable dictionary for each missing step and replacing an
// immutable dictionary on the way by a mutable copy. Returns false, storing nothing at the end,
// for an empty path, for nothing as the value, when `dict` is not a mutable dictionary, or when
// a step holds something that is not a dictionary (steps already made stay). A path without
// any key is stored under itself as a plain key; one that ends with a separator stores nothing
// at its end and returns true.
bool setObjectAtPath(const Value& dict, const Value& value, std::string_view path);
bool setObjectAtPath(const Value& dict, const Value& value, std::string_view path,
                     Separator separator);

// Like append, but always writes into `dict` itself and gives `dict` back.
Appender APPEND(const Value& dict);

// stringOfAny, then, when `removeAll` is true, removes every listed key.
std::optional<std::string>
stringOfAnyRemoveAll(const Value& dict, const std::vector<std::string>& keys, bool removeAll);

// A new mutable dictionary from path, value, path, value, ... Reading stops at the first path
// that is missing or not a string, or at a missing value, keeping what was written before.
Value keyValues(const std::vector<Value>& pathsAndValues);

// A mutable dictionary meant to hold values without owning them. Values are shared handles
// with no retain count of their own to leave alone, so this is a plain mutable dictionary that
// keeps each value as given, never copied. Unlike a non-owning table it keeps its values alive
// while it holds them, so nothing in it can dangle.
Value nonRetainingDictionary();

} // namespace px::expand
