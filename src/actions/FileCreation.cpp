#include "actions/FileCreation.h"

#include "support/FileHash.h"
#include "support/FileIO.h"
#include "support/PathName.h"
#include "support/TemporaryFiles.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace px::creation {

namespace fs = std::filesystem;

namespace {

Error errorOf(const std::string& what, const std::error_code& code) {
    return Error{what + ": " + code.message(), code.value()};
}

void discard(const std::string& temporary) {
    std::error_code ignored;
    fs::remove_all(temporary, ignored);
}

ErrorOr<void> renameKeeping(const std::string& from, const std::string& to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return {};
    if (errno != EINVAL && errno != ENOSYS) return Error::fromErrno("cannot create " + to, errno);
    // File systems without RENAME_NOREPLACE: check, then rename.
    struct stat info {};
    if (::lstat(to.c_str(), &info) == 0) return Error::fromErrno("cannot create " + to, EEXIST);
    if (::rename(from.c_str(), to.c_str()) == 0) return {};
    return Error::fromErrno("cannot create " + to, errno);
}

// rename(2) cannot put a file over a folder, a folder over a file or over a folder with
// contents; those targets are removed first.
ErrorOr<void> renameReplacing(const std::string& from, const std::string& to) {
    if (::rename(from.c_str(), to.c_str()) == 0) return {};
    const int first = errno;
    if (first != EISDIR && first != ENOTDIR && first != ENOTEMPTY && first != EEXIST)
        return Error::fromErrno("cannot replace " + to, first);
    if (!filehash::remove(to)) return Error::fromErrno("cannot remove the item at " + to, EACCES);
    if (::rename(from.c_str(), to.c_str()) == 0) return {};
    return Error::fromErrno("cannot create " + to, errno);
}

ErrorOr<void> commit(const std::string& temporary, const std::string& target, Existing existing) {
    auto placed = existing == Existing::Replace ? renameReplacing(temporary, target)
                                                : renameKeeping(temporary, target);
    if (placed.isError()) discard(temporary);
    return placed;
}

bool isWithin(const fs::path& inner, const fs::path& outer) {
    const std::string a = inner.native(), b = outer.native();
    return a == b || (a.size() > b.size() && a.compare(0, b.size(), b) == 0 &&
                      (b.ends_with('/') || a[b.size()] == '/'));
}

// The target with its folder resolved and its own name kept (a link at the target is an item
// to replace, not a way to its destination).
fs::path resolvedTarget(const std::string& target) {
    std::error_code code;
    fs::path folder = fs::weakly_canonical(path::deletingLastPathComponent(target), code);
    return folder / path::lastPathComponent(target);
}

ErrorOr<void> checkCopyable(const fs::path& source, const std::string& target) {
    struct stat info {};
    if (::stat(source.c_str(), &info) != 0)
        return Error::fromErrno("cannot read " + source.native(), errno);
    if (!S_ISREG(info.st_mode) && !S_ISDIR(info.st_mode))
        return Error{source.native() + " is neither a file nor a folder", EINVAL};
    const fs::path resolved = resolvedTarget(target);
    if (isWithin(resolved, source) || isWithin(source, resolved))
        return Error{"the new item " + target + " would overlap its template " + source.native(),
                     EINVAL};
    return {};
}

// What a copy wrote, made durable; any write that failed on the way is reported here.
std::error_code synced(const std::string& temporary) {
    auto done = io::syncFileSystemOf(path::deletingLastPathComponent(temporary));
    return done.isError() ? std::error_code(done.error().code, std::generic_category())
                          : std::error_code();
}

ErrorOr<void> copyToTemporary(const fs::path& source, const std::string& temporary) {
    std::error_code code;
    if (fs::is_directory(source, code))
        fs::copy(source, temporary, fs::copy_options::recursive | fs::copy_options::copy_symlinks,
                 code);
    else
        fs::copy_file(source, temporary, fs::copy_options::none, code);
    if (!code) code = synced(temporary);
    if (!code) return {};
    discard(temporary);
    return errorOf("cannot copy " + source.native(), code);
}

} // namespace

ErrorOr<void> copyItem(const std::string& source, const std::string& target, Existing existing) {
    std::error_code code;
    const fs::path resolved = fs::canonical(source, code);
    if (code) return errorOf("cannot read " + source, code);
    TRY(checkCopyable(resolved, target));
    const std::string temporary = io::temporaryBeside(target);
    TRY(copyToTemporary(resolved, temporary));
    return commit(temporary, target, existing);
}

ErrorOr<void> writeFile(const std::string& target, std::string_view bytes, Existing existing) {
    const std::string temporary = io::temporaryBeside(target);
    io::FileDescriptor fd(::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    if (!fd.valid()) return Error::fromErrno("cannot create " + target, errno);
    while (!bytes.empty()) {
        ssize_t put = ::write(fd.get(), bytes.data(), bytes.size());
        if (put < 0 && errno == EINTR) continue;
        if (put < 0) {
            const int failure = errno;
            discard(temporary);
            return Error::fromErrno("cannot write " + target, failure);
        }
        bytes.remove_prefix(static_cast<std::size_t>(put));
    }
    if (::fsync(fd.get()) != 0 || ::close(fd.release()) != 0) {
        const int failure = errno;
        discard(temporary);
        return Error::fromErrno("cannot write " + target, failure);
    }
    return commit(temporary, target, existing);
}

} // namespace px::creation
