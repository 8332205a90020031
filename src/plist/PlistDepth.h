#pragma once

#include <string_view>

namespace px::plist {

// Checks, before a property-list reader that recurses once per level sees them, that the
// containers in XML or binary property-list bytes nest no deeper than `maxDepth` levels below
// the root. Hostile files nested a hundred thousand levels deep would otherwise exhaust the
// stack. Bytes that are not a readable property list pass: the reader refuses them itself.
bool nestsWithin(std::string_view bytes, int maxDepth);

} // namespace px::plist
