#include "support/TextLines.h"

namespace px::text {

std::vector<Line> splitLines(std::string_view content) {
    std::vector<Line> lines;
    while (!content.empty()) {
        auto end = content.find('\n');
        if (end == std::string_view::npos) {
            lines.push_back({content, false});
            break;
        }
        lines.push_back({content.substr(0, end), true});
        content.remove_prefix(end + 1);
    }
    return lines;
}

std::string joinLines(const std::vector<Line>& lines) {
    std::string result;
    for (const Line& line : lines) {
        result.append(line.text);
        if (line.ended) result += '\n';
    }
    return result;
}

} // namespace px::text
