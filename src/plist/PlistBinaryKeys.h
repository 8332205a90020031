#pragma once

#include <string_view>

namespace px::plist {

// Checks, before libplist reads them, that no dictionary key of binary property-list bytes is
// UTF-16 text holding a zero character: libplist 2.2 aborts the whole process on reading such
// a key. Also false when the check would cost far more than the size of the bytes, which only
// a crafted file does. Other bytes (XML, broken or cut binary files) pass: the reader refuses
// those itself.
bool binaryKeysAreReadable(std::string_view bytes);

} // namespace px::plist
