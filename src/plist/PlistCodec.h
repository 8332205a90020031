#pragma once

#include "plist/Value.h"
#include "support/ErrorOr.h"

#include <string>
#include <string_view>

namespace px::plist {

enum class Format { Xml, Binary };

// Reads an XML or binary property list. Containers come back immutable, as a settings store
// hands them out. Dates are seconds since 1970 UTC.
ErrorOr<Value> parse(std::string_view bytes);

// Writes a property list. Null values have no property-list form and are left out.
ErrorOr<std::string> serialize(const Value& value, Format format = Format::Xml);

ErrorOr<Value> readFile(const std::string& path);
// Writes beside the target under a temporary name, flushes, then renames over it.
ErrorOr<void> writeFileAtomically(const std::string& path, const Value& value,
                                  Format format = Format::Xml);

} // namespace px::plist
