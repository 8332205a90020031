#include "actions/ItemPlacement.h"

#include "actions/TreeRemoval.h"
#include "support/PathName.h"
#include "support/TemporaryFiles.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

namespace px::placement {

namespace {

bool existsAt(const std::string& path) {
    struct stat info {};
    return ::lstat(path.c_str(), &info) == 0;
}

ErrorOr<void> renameKeeping(const std::string& from, const std::string& to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return {};
    if (errno != EINVAL && errno != ENOSYS) return Error::fromErrno("cannot create " + to, errno);
    // File systems without RENAME_NOREPLACE: look, then rename.
    if (existsAt(to)) return Error::fromErrno("cannot create " + to, EEXIST);
    if (::rename(from.c_str(), to.c_str()) == 0) return {};
    return Error::fromErrno("cannot create " + to, errno);
}

// rename(2) cannot put a folder over a file, a file over a folder, or anything over a folder
// with contents: the old item steps aside first and goes once the new one is in place.
ErrorOr<void> renameAside(const std::string& from, const std::string& to) {
    const std::string aside = io::temporaryBeside(to);
    if (::rename(to.c_str(), aside.c_str()) != 0)
        return Error::fromErrno("cannot replace " + to, errno);
    if (::rename(from.c_str(), to.c_str()) != 0) {
        const int failure = errno;
        ::rename(aside.c_str(), to.c_str());
        return Error::fromErrno("cannot replace " + to, failure);
    }
    auto removed = filecopy::removeTree(aside, filecopy::Permissions::MakeWritable);
    if (removed.isError())
        return Error{fmt::format("{} is in place, but the item it replaced is left at {}: {}", to,
                                 aside, removed.error().message),
                     removed.error().code};
    return {};
}

ErrorOr<void> renameReplacing(const std::string& from, const std::string& to) {
    if (::rename(from.c_str(), to.c_str()) == 0) return {};
    const int failure = errno;
    if (failure == EISDIR || failure == ENOTDIR || failure == ENOTEMPTY || failure == EEXIST)
        return renameAside(from, to);
    return Error::fromErrno("cannot replace " + to, failure);
}

} // namespace

ErrorOr<void> place(const std::string& from, const std::string& to, creation::Existing existing) {
    return existing == creation::Existing::Replace ? renameReplacing(from, to)
                                                   : renameKeeping(from, to);
}

} // namespace px::placement
