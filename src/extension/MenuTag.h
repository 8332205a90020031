#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Menu tags: two decimal digits per menu level, each the 1-based position at that level.
namespace px::menutag {

// "%02ld" of a top-level tag, the parent tag string of its submenu.
std::string topLevelText(std::int64_t tag);
// The tag text of a child at 0-based position `index` under a parent tag text ("%@%02d").
std::string childText(const std::string& parentText, std::size_t index);
std::int64_t toTag(const std::string& text);
// The tag cut into two-digit pieces from the left, after a "0" is put in front of an odd count.
std::vector<std::string> pieces(std::int64_t tag);
// The integer value of a piece as a string's integer value is read (0 when it has none).
int pieceValue(const std::string& piece);

} // namespace px::menutag
