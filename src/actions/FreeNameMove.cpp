#include "actions/FreeNameMove.h"

#include "support/FileHash.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>

namespace px {

namespace {

// Another process may take each free name before the rename does; give up after this many.
constexpr int kAttempts = 64;

// 0 when moved, else the errno; EEXIST when something is at `to`.
int renameWithoutReplacing(const std::string& from, const std::string& to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return 0;
    if (errno != EINVAL && errno != ENOSYS) return errno;
    // File systems without RENAME_NOREPLACE: check, then rename.
    struct stat info {};
    if (::lstat(to.c_str(), &info) == 0) return EEXIST;
    return ::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

} // namespace

ErrorOr<std::string> moveToFreeName(const std::string& from, const std::string& to) {
    std::string target = to;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        const int error = renameWithoutReplacing(from, target);
        if (error == 0) return target;
        if (error != EEXIST)
            return Error::fromErrno("cannot move " + from + " to " + target, error);
        target = filehash::uniquePath(to);
    }
    return Error::fromErrno("cannot move " + from + ": no free name beside " + to, EEXIST);
}

} // namespace px
