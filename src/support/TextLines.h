#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace px::text {

// One line of a text file and whether a line break ended it (the last line may have none), so
// that a file split and joined again comes back byte for byte.
struct Line {
    std::string_view text;
    bool ended = true;
};

// The lines of content; the views point into content.
std::vector<Line> splitLines(std::string_view content);

// The lines written back, each followed by a line break when it had one.
std::string joinLines(const std::vector<Line>& lines);

} // namespace px::text
