#include "actions/FileCopier.h"

#include "actions/DataCopy.h"
#include "actions/TreeRemoval.h"
#include "support/FileIO.h"
#include "support/PathName.h"

#include <cerrno>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <fstream>
#include <memory>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace px::filecopy {

namespace {

using io::FileDescriptor;

struct DirCloser {
    void operator()(DIR* dir) const { ::closedir(dir); }
};

// The file-mode creation mask, read without setting it: umask(2) would change it for a moment
// for every thread of the process. Nothing when it cannot be read.
std::optional<mode_t> processUmask() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("Umask:"))
            return static_cast<mode_t>(std::strtoul(line.c_str() + 6, nullptr, 8));
    return std::nullopt;
}

// One item by its name inside an open folder.
struct Place {
    int folder;
    const char* name;
};

// Copies one tree. Messages name the source item as `<parent shown>/<name>`; that text is
// only built when something fails, or once per folder.
class TreeCopier {
  public:
    ErrorOr<void> copyEntry(Place from, Place to, const std::string& parent, unsigned char type);
    bool madeTarget() const { return m_madeTarget; }

  private:
    ErrorOr<void> copyFile(Place from, Place to, const std::string& parent);
    ErrorOr<void> copyFolder(Place from, Place to, const std::string& parent);
    ErrorOr<void> copyEntries(DIR* dir, int out, const std::string& shown);
    ErrorOr<void> copyLink(Place from, Place to, const std::string& parent);
    ErrorOr<void> copySpecial(Place from, Place to, const std::string& parent);
    void keepModeAndTimes(int out, const struct stat& info, bool created0700);
    void made(int fd);

    DataCopy m_data;
    std::optional<mode_t> m_umask = processUmask();
    bool m_madeTarget = false;
    dev_t m_targetDevice = 0;
    ino_t m_targetInode = 0;
};

Error failure(const std::string& what, const std::string& parent, const char* name, int error) {
    return Error::fromErrno(what + " " + path::appendingPathComponent(parent, name), error);
}

const timespec* timesOf(const struct stat& info, timespec (&times)[2]) {
    times[0] = info.st_atim;
    times[1] = info.st_mtim;
    return times;
}

ErrorOr<void> TreeCopier::copyEntry(Place from, Place to, const std::string& parent,
                                    unsigned char type) {
    switch (type) {
    case DT_REG:
        return copyFile(from, to, parent);
    case DT_DIR:
        return copyFolder(from, to, parent);
    case DT_LNK:
        return copyLink(from, to, parent);
    case DT_UNKNOWN:
        break;
    default:
        return copySpecial(from, to, parent);
    }
    struct stat info {};
    if (::fstatat(from.folder, from.name, &info, AT_SYMLINK_NOFOLLOW) != 0)
        return failure("cannot read", parent, from.name, errno);
    return copyEntry(from, to, parent, IFTODT(info.st_mode));
}

// The first item made is the target itself; a folder made there is remembered so that a walk
// that meets it again (a folder copied into itself) stops instead of copying without end.
void TreeCopier::made(int fd) {
    if (m_madeTarget) return;
    m_madeTarget = true;
    struct stat info {};
    if (fd >= 0 && ::fstat(fd, &info) == 0) {
        m_targetDevice = info.st_dev;
        m_targetInode = info.st_ino;
    }
}

ErrorOr<void> TreeCopier::copyFile(Place from, Place to, const std::string& parent) {
    // Non-blocking, so that an item turned into a pipe since it was listed cannot hang the copy.
    FileDescriptor in(::openat(from.folder, from.name,
                               O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!in.valid()) return failure("cannot read", parent, from.name, errno);
    struct stat info {};
    if (::fstat(in.get(), &info) != 0) return failure("cannot read", parent, from.name, errno);
    if (!S_ISREG(info.st_mode)) {
        in = FileDescriptor();
        return copyEntry(from, to, parent, IFTODT(info.st_mode));
    }
    FileDescriptor out(
        ::openat(to.folder, to.name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, info.st_mode & 0777));
    if (!out.valid()) return failure("cannot create the copy of", parent, from.name, errno);
    made(-1);
    auto copied = m_data.copy(in.get(), out.get(), info.st_size);
    if (copied.isError()) return failure("cannot copy", parent, from.name, copied.error().code);
    keepModeAndTimes(out.get(), info, false);
    if (::close(out.release()) != 0) return failure("cannot copy", parent, from.name, errno);
    return {};
}

ErrorOr<void> TreeCopier::copyFolder(Place from, Place to, const std::string& parent) {
    FileDescriptor in(
        ::openat(from.folder, from.name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!in.valid()) return failure("cannot read", parent, from.name, errno);
    struct stat info {};
    if (::fstat(in.get(), &info) != 0) return failure("cannot read", parent, from.name, errno);
    if (m_madeTarget && info.st_dev == m_targetDevice && info.st_ino == m_targetInode)
        return Error{"cannot copy a folder into itself: " +
                         path::appendingPathComponent(parent, from.name),
                     EINVAL};
    // Made for the owner alone while it fills; its own mode comes last.
    if (::mkdirat(to.folder, to.name, S_IRWXU) != 0)
        return failure("cannot create the copy of", parent, from.name, errno);
    FileDescriptor out(
        ::openat(to.folder, to.name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!out.valid()) return failure("cannot create the copy of", parent, from.name, errno);
    made(out.get());
    std::unique_ptr<DIR, DirCloser> dir(::fdopendir(in.get()));
    if (!dir) return failure("cannot list", parent, from.name, errno);
    in.release();
    TRY(copyEntries(dir.get(), out.get(), path::appendingPathComponent(parent, from.name)));
    keepModeAndTimes(out.get(), info, true);
    return {};
}

ErrorOr<void> TreeCopier::copyEntries(DIR* dir, int out, const std::string& shown) {
    for (;;) {
        errno = 0;
        const dirent* entry = ::readdir(dir);
        if (!entry) break;
        const char* name = entry->d_name;
        if (name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'))) continue;
        TRY(copyEntry({::dirfd(dir), name}, {out, name}, shown, entry->d_type));
    }
    if (errno != 0) return Error::fromErrno("cannot list " + shown, errno);
    return {};
}

ErrorOr<void> TreeCopier::copyLink(Place from, Place to, const std::string& parent) {
    struct stat info {};
    if (::fstatat(from.folder, from.name, &info, AT_SYMLINK_NOFOLLOW) != 0)
        return failure("cannot read", parent, from.name, errno);
    if (!S_ISLNK(info.st_mode)) return copyEntry(from, to, parent, IFTODT(info.st_mode));
    std::string target(static_cast<std::size_t>(info.st_size) + 1, '\0');
    for (;;) {
        const ssize_t length = ::readlinkat(from.folder, from.name, target.data(), target.size());
        if (length < 0) return failure("cannot read", parent, from.name, errno);
        if (static_cast<std::size_t>(length) < target.size()) {
            target.resize(static_cast<std::size_t>(length));
            break;
        }
        target.resize(target.size() * 2); // the link changed since it was looked at
    }
    if (::symlinkat(target.c_str(), to.folder, to.name) != 0)
        return failure("cannot create the copy of", parent, from.name, errno);
    made(-1);
    timespec times[2];
    ::utimensat(to.folder, to.name, timesOf(info, times), AT_SYMLINK_NOFOLLOW);
    return {};
}

// Pipes and sockets become new ones of their kind (their traffic is nothing to copy); device
// nodes only where the process may make them.
ErrorOr<void> TreeCopier::copySpecial(Place from, Place to, const std::string& parent) {
    struct stat info {};
    if (::fstatat(from.folder, from.name, &info, AT_SYMLINK_NOFOLLOW) != 0)
        return failure("cannot read", parent, from.name, errno);
    if (::mknodat(to.folder, to.name, info.st_mode & (S_IFMT | 0777), info.st_rdev) != 0)
        return failure("cannot create the copy of", parent, from.name, errno);
    made(-1);
    // The mode and the times follow where the file system takes them; the node is made either way.
    [[maybe_unused]] const int modeSet = ::fchmodat(to.folder, to.name, info.st_mode & 07777, 0);
    timespec times[2];
    ::utimensat(to.folder, to.name, timesOf(info, times), AT_SYMLINK_NOFOLLOW);
    return {};
}

// Best effort, as file managers do: a file system without Unix modes (FAT on a stick) still
// gets the contents. Set last, since writing into the item would change its times and clear
// set-user-id bits.
void TreeCopier::keepModeAndTimes(int out, const struct stat& info, bool created0700) {
    const mode_t wanted = info.st_mode & 07777;
    const mode_t created = created0700 ? S_IRWXU : (info.st_mode & 0777);
    if (!m_umask || wanted != (created & ~*m_umask)) ::fchmod(out, wanted);
    timespec times[2];
    ::futimens(out, timesOf(info, times));
}

FileDescriptor openFolder(const std::string& path) {
    return FileDescriptor(
        ::open(path.empty() ? "." : path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
}

bool isPlainName(const std::string& name) {
    return !name.empty() && name != "/" && name != "." && name != "..";
}

} // namespace

ErrorOr<void> copyItem(const std::string& source, const std::string& target) {
    const std::string sourceName = path::lastPathComponent(source);
    const std::string targetName = path::lastPathComponent(target);
    if (!isPlainName(sourceName)) return Error{"cannot copy " + source + ": not an item", EINVAL};
    if (!isPlainName(targetName)) return Error{"cannot copy to " + target + ": no name", EINVAL};
    const std::string sourceFolder = path::deletingLastPathComponent(source);
    FileDescriptor from = openFolder(sourceFolder);
    if (!from.valid()) return Error::fromErrno("cannot read " + source, errno);
    FileDescriptor to = openFolder(path::deletingLastPathComponent(target));
    if (!to.valid()) return Error::fromErrno("cannot copy into " + target, errno);
    struct stat info {};
    if (::fstatat(from.get(), sourceName.c_str(), &info, AT_SYMLINK_NOFOLLOW) != 0)
        return Error::fromErrno("cannot read " + source, errno);
    TreeCopier copier;
    auto copied = copier.copyEntry({from.get(), sourceName.c_str()}, {to.get(), targetName.c_str()},
                                   sourceFolder, IFTODT(info.st_mode));
    if (copied.isError() && copier.madeTarget())
        (void)removeTree(target, Permissions::MakeWritable);
    return copied;
}

} // namespace px::filecopy
