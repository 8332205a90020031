#include "actions/ItemTransfer.h"

#include "actions/FileCopier.h"
#include "actions/ItemPlacement.h"
#include "actions/TreeRemoval.h"
#include "support/PathName.h"
#include "support/TemporaryFiles.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <fmt/format.h>
#include <memory>
#include <sys/stat.h>

namespace px::transfer {

namespace {

// The path with its folder resolved and its own last name kept, so that a symbolic link is the
// link itself; the path as given when its folder cannot be resolved.
std::string resolvedKeepingName(const std::string& path) {
    const std::string folder = path::deletingLastPathComponent(path);
    std::unique_ptr<char, decltype(&std::free)> real(
        ::realpath(folder.empty() ? "." : folder.c_str(), nullptr), &std::free);
    if (!real) return path;
    return path::appendingPathComponent(real.get(), path::lastPathComponent(path));
}

bool isWithin(const std::string& inner, const std::string& outer) {
    if (outer == "/") return true;
    return inner.size() > outer.size() && inner.compare(0, outer.size(), outer) == 0 &&
           inner[outer.size()] == '/';
}

bool sameItem(const std::string& a, const std::string& b) {
    struct stat first {
    }, second{};
    return ::lstat(a.c_str(), &first) == 0 && ::lstat(b.c_str(), &second) == 0 &&
           first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

ErrorOr<void> checkTransfer(const std::string& source, const std::string& target, Existing existing,
                            const char* verb) {
    struct stat info {};
    if (::lstat(source.c_str(), &info) != 0)
        return Error::fromErrno("cannot read " + source, errno);
    const std::string from = resolvedKeepingName(source), to = resolvedKeepingName(target);
    if (S_ISDIR(info.st_mode) && isWithin(to, from))
        return Error{fmt::format("cannot {} {} into itself", verb, source), EINVAL};
    if (existing == Existing::Replace && replacesSource(source, target))
        return Error{fmt::format("will not replace {} with itself", target), EINVAL};
    return {};
}

bool onOneFileSystem(const std::string& source, const std::string& target) {
    struct stat from {
    }, into{};
    const std::string folder = path::deletingLastPathComponent(target);
    return ::lstat(source.c_str(), &from) == 0 &&
           ::stat(folder.empty() ? "." : folder.c_str(), &into) == 0 && from.st_dev == into.st_dev;
}

// A copy beside the target under a temporary name, then put in place.
ErrorOr<void> copyIntoPlace(const std::string& source, const std::string& target,
                            Existing existing) {
    const std::string temporary = io::temporaryBeside(target);
    TRY(filecopy::copyItem(source, temporary));
    // One flush for the whole copy: a write that failed at the last moment is caught here.
    auto placed = io::syncFileSystemOf(path::deletingLastPathComponent(temporary));
    if (!placed.isError()) placed = placement::place(temporary, target, existing);
    if (placed.isError())
        (void)filecopy::removeTree(temporary, filecopy::Permissions::MakeWritable);
    return placed;
}

} // namespace

bool replacesSource(const std::string& source, const std::string& target) {
    if (sameItem(source, target)) return true;
    const std::string from = resolvedKeepingName(source), to = resolvedKeepingName(target);
    return from == to || isWithin(from, to);
}

ErrorOr<void> copyItem(const std::string& source, const std::string& target, Existing existing) {
    TRY(checkTransfer(source, target, existing, "copy"));
    return copyIntoPlace(source, target, existing);
}

ErrorOr<void> moveItem(const std::string& source, const std::string& target, Existing existing) {
    TRY(checkTransfer(source, target, existing, "move"));
    if (onOneFileSystem(source, target)) {
        auto renamed = placement::place(source, target, existing);
        if (!renamed.isError() || renamed.error().code != EXDEV) return renamed;
    }
    TRY(copyIntoPlace(source, target, existing));
    auto removed = filecopy::removeTree(source, filecopy::Permissions::AsTheyAre);
    if (removed.isError())
        return Error{fmt::format("{} was copied to {}, but the original stays: {}", source, target,
                                 removed.error().message),
                     removed.error().code};
    return {};
}

} // namespace px::transfer
