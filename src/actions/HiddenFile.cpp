#include "actions/HiddenFile.h"

#include "support/FileIO.h"
#include "support/PathName.h"
#include "support/TextLines.h"

#include <algorithm>
#include <cerrno>
#include <unistd.h>

namespace px::hiddenfile {

namespace {

using text::Line;
using text::splitLines;

bool contains(const std::vector<std::string>& names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

std::string filePath(const std::string& folder) {
    return path::appendingPathComponent(folder, kFileName);
}

// The file's text; empty when there is none, an error when it exists but cannot be read.
ErrorOr<std::string> readList(const std::string& folder) {
    auto content = io::readWholeFile(filePath(folder));
    if (content.isError() && content.error().code == ENOENT) return std::string{};
    return content;
}

ErrorOr<void> removeList(const std::string& folder) {
    const std::string file = filePath(folder);
    if (::unlink(file.c_str()) != 0 && errno != ENOENT)
        return Error::fromErrno("cannot remove " + file, errno);
    return {};
}

} // namespace

bool canList(std::string_view name) {
    if (name.empty() || name == "." || name == "..") return false;
    return name.find_first_of("\n/") == std::string_view::npos;
}

std::string withNamesAdded(std::string_view content, const std::vector<std::string>& names) {
    std::vector<std::string> listed;
    for (const Line& line : splitLines(content))
        listed.emplace_back(line.text);
    std::string result(content);
    for (const auto& name : names) {
        if (!canList(name) || contains(listed, name)) continue;
        if (!result.empty() && result.back() != '\n') result += '\n';
        result += name + '\n';
        listed.push_back(name);
    }
    return result;
}

std::string withNamesRemoved(std::string_view content, const std::vector<std::string>& names) {
    std::string result;
    for (const Line& line : splitLines(content)) {
        if (canList(line.text) && contains(names, line.text)) continue;
        result.append(line.text);
        if (line.ended) result += '\n';
    }
    return result;
}

bool isBlank(std::string_view content) {
    return content.find_first_not_of(" \t\r\n\v\f") == std::string_view::npos;
}

std::vector<std::string> listedNames(const std::string& folder) {
    auto content = readList(folder);
    std::vector<std::string> names;
    if (content.isError()) return names;
    for (const Line& line : splitLines(content.value()))
        names.emplace_back(line.text);
    return names;
}

ErrorOr<void> hide(const std::string& folder, const std::vector<std::string>& names) {
    std::string content = TRY(readList(folder));
    std::string changed = withNamesAdded(content, names);
    if (changed == content) return {};
    return io::replaceFileAtomically(filePath(folder), changed);
}

ErrorOr<void> unhide(const std::string& folder, const std::vector<std::string>& names) {
    std::string content = TRY(readList(folder));
    std::string changed = withNamesRemoved(content, names);
    if (changed == content) return {};
    if (isBlank(changed)) return removeList(folder);
    return io::replaceFileAtomically(filePath(folder), changed);
}

} // namespace px::hiddenfile
