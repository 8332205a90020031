#include "actions/DirectoryFile.h"

#include "support/FileIO.h"
#include "support/PathName.h"
#include "support/TextLines.h"

#include <cerrno>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace px::directoryfile {

namespace {

constexpr std::string_view kEntryGroup = "[Desktop Entry]";

using text::Line;
using text::splitLines;

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n\v\f";
    auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

bool isBlank(std::string_view text) {
    return trimmed(text).empty();
}
bool endsWithReturn(std::string_view text) {
    return !text.empty() && text.back() == '\r';
}

// "Icon=...", "Icon = ...", but not "Icon[de]=..." or "IconSize=...".
bool isIconLine(std::string_view text) {
    std::string_view line = trimmed(text);
    if (!line.starts_with("Icon")) return false;
    std::string_view rest = trimmed(line.substr(4));
    return rest.starts_with('=');
}

// The header's index and the end of the group's lines (the next header or the end).
struct Group {
    std::size_t header;
    std::size_t end;
};

std::optional<Group> entryGroup(const std::vector<Line>& lines) {
    std::optional<Group> group;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const bool header = trimmed(lines[i].text).starts_with('[');
        if (group && header) return Group{group->header, i};
        if (!group && trimmed(lines[i].text) == kEntryGroup) group = Group{i, lines.size()};
    }
    return group;
}

bool groupHasIcon(const std::vector<Line>& lines, Group group) {
    for (std::size_t i = group.header + 1; i < group.end; ++i)
        if (isIconLine(lines[i].text)) return true;
    return false;
}

// Only blank lines would be left in the group once its icon lines go.
bool groupEmptiedWithoutIcon(const std::vector<Line>& lines, Group group) {
    for (std::size_t i = group.header + 1; i < group.end; ++i)
        if (!isIconLine(lines[i].text) && !isBlank(lines[i].text)) return false;
    return true;
}

std::string appendedGroup(std::string_view content, std::string_view iconLine) {
    std::string result(content);
    if (!result.empty() && result.back() != '\n') result += '\n';
    if (!isBlank(result)) result += '\n';
    result.append(kEntryGroup).append("\n").append(iconLine).append("\n");
    return result;
}

std::string filePath(const std::string& folder) {
    return path::appendingPathComponent(folder, kFileName);
}

ErrorOr<void> requireFolder(const std::string& folder) {
    struct stat info {};
    if (::stat(folder.c_str(), &info) != 0)
        return Error::fromErrno("cannot reach " + folder, errno);
    if (!S_ISDIR(info.st_mode)) return Error{folder + " is not a folder", ENOTDIR};
    return {};
}

// The file's text; empty when there is none, an error when it exists but cannot be read.
ErrorOr<std::string> readExisting(const std::string& folder) {
    auto content = io::readWholeFile(filePath(folder));
    if (content.isError() && content.error().code == ENOENT) return std::string{};
    return content;
}

} // namespace

std::string escapedValue(std::string_view value) {
    std::string result;
    for (std::size_t i = 0; i < value.size(); ++i) {
        const char c = value[i];
        if (c == '\\')
            result += "\\\\";
        else if (c == '\n')
            result += "\\n";
        else if (c == '\t')
            result += "\\t";
        else if (c == '\r')
            result += "\\r";
        else if (c == ' ' && i == 0)
            result += "\\s";
        else
            result += c;
    }
    return result;
}

std::string withIcon(std::string_view content, std::string_view value) {
    const std::string iconLine = "Icon=" + escapedValue(value);
    const std::string iconLineWithReturn = iconLine + '\r';
    std::vector<Line> lines = splitLines(content);
    auto group = entryGroup(lines);
    if (!group) return appendedGroup(content, iconLine);
    const bool hasIcon = groupHasIcon(lines, *group);
    std::vector<Line> result;
    bool placed = false;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        Line line = lines[i];
        const bool inGroup = i > group->header && i < group->end;
        if (inGroup && isIconLine(line.text)) {
            if (!placed)
                result.push_back(
                    {endsWithReturn(line.text) ? iconLineWithReturn : iconLine, line.ended});
            placed = true;
            continue;
        }
        if (i != group->header || hasIcon) {
            result.push_back(line);
            continue;
        }
        result.push_back({line.text, true});
        result.push_back({endsWithReturn(line.text) ? iconLineWithReturn : iconLine, line.ended});
    }
    return text::joinLines(result);
}

std::string withoutIcon(std::string_view content) {
    std::vector<Line> lines = splitLines(content);
    auto group = entryGroup(lines);
    if (!group) return std::string(content);
    const bool dropGroup = groupEmptiedWithoutIcon(lines, *group);
    std::vector<Line> result;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const bool inGroup = i > group->header && i < group->end;
        if (i == group->header && dropGroup) {
            // The blank lines before the dropped header go with it; those after it stay.
            while (!result.empty() && isBlank(result.back().text))
                result.pop_back();
            continue;
        }
        if (inGroup && isIconLine(lines[i].text)) continue;
        result.push_back(lines[i]);
    }
    return text::joinLines(result);
}

ErrorOr<void> setIcon(const std::string& folder, std::string_view value) {
    TRY(requireFolder(folder));
    std::string content = TRY(readExisting(folder));
    std::string changed = withIcon(content, value);
    if (changed == content) return {};
    return io::replaceFileAtomically(filePath(folder), changed);
}

ErrorOr<void> removeIcon(const std::string& folder) {
    TRY(requireFolder(folder));
    std::string content = TRY(readExisting(folder));
    std::string changed = withoutIcon(content);
    if (changed == content) return {};
    if (!isBlank(changed)) return io::replaceFileAtomically(filePath(folder), changed);
    const std::string file = filePath(folder);
    if (::unlink(file.c_str()) != 0 && errno != ENOENT)
        return Error::fromErrno("cannot remove " + file, errno);
    return {};
}

} // namespace px::directoryfile
