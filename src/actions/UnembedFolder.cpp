// Moving a folder's visible entries up one level and removing the emptied folder.
#include "actions/EmbedFolder.h"
#include "actions/FreeNameMove.h"
#include "support/FileHash.h"
#include "support/PathName.h"

#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <filesystem>
#include <memory>

namespace px::embed {

namespace {

// The folder's entry names, sorted, without "." and "..".
ErrorOr<std::vector<std::string>> listEntries(const std::string& folder) {
    std::unique_ptr<DIR, int (*)(DIR*)> dir(::opendir(folder.c_str()), &::closedir);
    if (!dir) return Error::fromErrno("cannot read the folder " + folder, errno);
    std::vector<std::string> names;
    errno = 0;
    while (const dirent* entry = ::readdir(dir.get())) {
        std::string_view name = entry->d_name;
        if (name != "." && name != "..") names.emplace_back(name);
    }
    if (errno != 0) return Error::fromErrno("cannot read the folder " + folder, errno);
    std::sort(names.begin(), names.end());
    return names;
}

bool isHidden(const std::string& name) {
    return name.starts_with('.');
}

std::vector<std::string> visibleOnly(std::vector<std::string> names) {
    std::erase_if(names, isHidden);
    return names;
}

// The path without "." or ".." steps and without a trailing "/".
std::string normalized(const std::string& folder) {
    std::string text = std::filesystem::path(folder).lexically_normal().string();
    while (text.size() > 1 && text.ends_with('/'))
        text.pop_back();
    return text;
}

// "/" and the user's and system's own folders are never dissolved.
bool isProtected(const std::string& folder) {
    const std::string parent = path::deletingLastPathComponent(folder);
    return parent.empty() || parent == folder || filehash::isSystemFolder(folder);
}

// Removes the folder and the hidden entries left in it, unless visible ones turned up since.
std::optional<Error> removeEmptied(const std::string& folder) {
    auto left = listEntries(folder);
    if (left.isError()) return left.releaseError();
    if (!visibleOnly(left.value()).empty())
        return Error{"kept " + folder + ": new items appeared in it meanwhile", EEXIST};
    if (!filehash::remove(folder)) return Error{"cannot remove the folder " + folder, EACCES};
    return std::nullopt;
}

} // namespace

UnembedOutcome unembedFolder(const std::string& selected) {
    const std::string folder = normalized(selected);
    if (isProtected(folder))
        return {UnembedResult::Failed, Error{"refusing to dissolve " + folder, EPERM}};
    auto names = listEntries(folder);
    if (names.isError()) return {UnembedResult::Failed, names.releaseError()};
    const std::vector<std::string> visible = visibleOnly(names.releaseValue());
    if (visible.empty()) return {UnembedResult::Empty, std::nullopt};
    const std::string parent = path::deletingLastPathComponent(folder);
    for (const std::string& name : visible) {
        auto moved = moveToFreeName(path::appendingPathComponent(folder, name),
                                    path::appendingPathComponent(parent, name));
        if (moved.isError()) return {UnembedResult::Failed, moved.releaseError()};
    }
    return {UnembedResult::Moved, removeEmptied(folder)};
}

} // namespace px::embed
