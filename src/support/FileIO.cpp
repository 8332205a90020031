#include "support/FileIO.h"

#include "support/TemporaryFiles.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace px::io {

FileDescriptor& FileDescriptor::operator=(FileDescriptor&& other) noexcept {
    if (this != &other) {
        if (m_fd >= 0) ::close(m_fd);
        m_fd = other.release();
    }
    return *this;
}

FileDescriptor::~FileDescriptor() {
    if (m_fd >= 0) ::close(m_fd);
}

int FileDescriptor::release() {
    int fd = m_fd;
    m_fd = -1;
    return fd;
}

ErrorOr<std::string> readWholeFile(const std::string& path) {
    FileDescriptor fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!fd.valid()) return Error::fromErrno("cannot open " + path, errno);
    std::string bytes;
    char buffer[65536];
    for (;;) {
        ssize_t got = ::read(fd.get(), buffer, sizeof buffer);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return Error::fromErrno("cannot read " + path, errno);
        if (got == 0) return bytes;
        bytes.append(buffer, static_cast<size_t>(got));
    }
}

namespace {

ErrorOr<void> writeAll(int fd, std::string_view bytes, const std::string& path) {
    while (!bytes.empty()) {
        ssize_t put = ::write(fd, bytes.data(), bytes.size());
        if (put < 0 && errno == EINTR) continue;
        if (put < 0) return Error::fromErrno("cannot write " + path, errno);
        bytes.remove_prefix(static_cast<size_t>(put));
    }
    return {};
}

mode_t modeToKeep(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 ? (info.st_mode & 07777) : 0644;
}

} // namespace

ErrorOr<void> replaceFileAtomically(const std::string& path, std::string_view bytes) {
    std::string temporary = temporaryBeside(path);
    FileDescriptor fd(::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!fd.valid()) return Error::fromErrno("cannot create " + temporary, errno);
    auto written = writeAll(fd.get(), bytes, path);
    if (written && ::fchmod(fd.get(), modeToKeep(path)) != 0)
        written = Error::fromErrno("chmod", errno);
    if (written && ::fsync(fd.get()) != 0)
        written = Error::fromErrno("cannot write " + path, errno);
    if (written && ::close(fd.release()) != 0)
        written = Error::fromErrno("cannot write " + path, errno);
    if (written && ::rename(temporary.c_str(), path.c_str()) != 0)
        written = Error::fromErrno("cannot replace " + path, errno);
    if (written.isError()) ::unlink(temporary.c_str());
    return written;
}

ErrorOr<void> makeDirectories(const std::string& path, unsigned mode) {
    if (path.empty()) return {};
    for (size_t slash = path.find('/', 1);; slash = path.find('/', slash + 1)) {
        std::string prefix = path.substr(0, slash);
        if (::mkdir(prefix.c_str(), mode) != 0 && errno != EEXIST)
            return Error::fromErrno("cannot create " + prefix, errno);
        if (slash == std::string::npos) return {};
    }
}

bool exists(const std::string& path) {
    struct stat info {};
    return ::lstat(path.c_str(), &info) == 0;
}

ErrorOr<FileLock> FileLock::acquire(const std::string& lockPath) {
    FileDescriptor fd(::open(lockPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    if (!fd.valid()) return Error::fromErrno("cannot open " + lockPath, errno);
    while (::flock(fd.get(), LOCK_EX) != 0)
        if (errno != EINTR) return Error::fromErrno("cannot lock " + lockPath, errno);
    return FileLock(std::move(fd));
}

} // namespace px::io
