#include "actions/PermissionLock.h"

#include "actions/ModeAttribute.h"

#include <cerrno>
#include <sys/stat.h>

namespace px::permlock {

namespace {

constexpr unsigned kWriteBits = S_IWUSR | S_IWGRP | S_IWOTH;
constexpr unsigned kModeBits = 07777;

ErrorOr<unsigned> currentMode(const std::string& path) {
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0) return Error::fromErrno("cannot read " + path, errno);
    return static_cast<unsigned>(info.st_mode) & kModeBits;
}

ErrorOr<void> changeMode(const std::string& path, unsigned mode) {
    if (::chmod(path.c_str(), static_cast<mode_t>(mode)) != 0)
        return Error::fromErrno("cannot change the permissions of " + path, errno);
    return {};
}

// Keeping the bits may fail for want of user attributes (ENOTSUP), or because the item is of a
// kind that carries none (EPERM); the lock goes on without them and unlocking falls back.
bool canLockWithout(const Error& error) {
    return error.code == ENOTSUP || error.code == EPERM;
}

} // namespace

unsigned lockedMode(unsigned current) {
    return current & kModeBits & ~kWriteBits;
}

unsigned unlockedMode(unsigned current, std::optional<unsigned> saved) {
    unsigned base = saved ? ((current & ~kWriteBits) | (*saved & kWriteBits)) : current;
    return (base | S_IWUSR) & kModeBits;
}

ErrorOr<void> lock(const std::string& path) {
    unsigned mode = TRY(currentMode(path));
    if ((mode & S_IWUSR) == 0) return {};
    auto kept = modeattr::save(path, mode);
    if (kept.isError() && !canLockWithout(kept.error())) return kept;
    auto changed = changeMode(path, lockedMode(mode));
    if (changed.isError() && !kept.isError()) modeattr::forget(path);
    return changed;
}

ErrorOr<void> unlock(const std::string& path) {
    unsigned mode = TRY(currentMode(path));
    if ((mode & S_IWUSR) == 0) TRY(changeMode(path, unlockedMode(mode, modeattr::load(path))));
    modeattr::forget(path);
    return {};
}

} // namespace px::permlock
