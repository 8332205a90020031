#pragma once

#include "config/Value.h"

#include <cstdint>
#include <optional>
#include <string>

// Conversions of any property-list value to a wanted kind, for loosely typed settings data.
// Nothing (an absent value) converts to nothing, 0 or false throughout; the null value is a
// value of its own and converts as each function says.
namespace px::expand {

using plist::Value;

// A number as it is; a string by its leading integer ("3.7" gives 3, "abc" gives 0); a date as
// its seconds since 1970 UTC, with fraction; null gives 0; anything else nothing.
Value asNSNumber(const Value& value);
// These read asNSNumber's result; nothing reads as 0 or false.
std::int64_t asInteger(const Value& value);
float asFloat(const Value& value);
bool asBool(const Value& value);

// Null gives nothing; a string as it is; data decoded as UTF-8, or byte by byte when it is not
// UTF-8; anything else as its description.
std::optional<std::string> asNSString(const Value& value);

// A date as it is. A string is read in UTC as "yyyy-MM-dd HH:mm:ss", "yyyy/MM/dd HH:mm:ss" or
// "yyyy-MM-dd" (the whole string must match one); other strings give nothing. Any other value
// is taken as seconds since 1970 through asNSNumber, so one it cannot convert gives 1970.
Value asNSDate(const Value& value);
// A string's bytes, or data as it is; anything else nothing.
Value asNSData(const Value& value);

// An array as it is; any other value wrapped in a one-element array.
Value asNSArray(const Value& value);
// Only a mutable array, as it is; anything else nothing (no conversion).
Value asNSMutableArray(const Value& value);
// A dictionary as it is, else nothing.
Value asNSDictionary(const Value& value);
// A mutable dictionary as it is; another dictionary as a new mutable copy; else nothing.
Value asNSMutableDictionary(const Value& value);

// The leading decimal integer of a text after blanks, with an optional sign; 0 when there is
// none. Out-of-range values saturate.
std::int64_t leadingInteger(std::string_view text);
// The leading floating-point number of a text after blanks; 0 when there is none.
double leadingReal(std::string_view text);

} // namespace px::expand
