#include "archive/FileEntrySource.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace px::archive {

namespace {

// Opens without blocking (a named pipe would otherwise wait for a writer) and accepts only
// regular files, then switches the descriptor back to blocking reads.
ErrorOr<io::FileDescriptor> openRegularFile(const std::string& path, struct stat& status) {
    io::FileDescriptor fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!fd.valid()) return Error::fromErrno("cannot open " + path, errno);
    if (::fstat(fd.get(), &status) != 0) return Error::fromErrno("cannot read " + path, errno);
    if (!S_ISREG(status.st_mode)) return Error{"not a regular file: " + path, EINVAL};
    int flags = ::fcntl(fd.get(), F_GETFL);
    if (flags < 0 || ::fcntl(fd.get(), F_SETFL, flags & ~O_NONBLOCK) != 0)
        return Error::fromErrno("cannot read " + path, errno);
    return fd;
}

} // namespace

ErrorOr<FileEntrySource> FileEntrySource::make(std::string path) {
    struct stat status {};
    TRY(openRegularFile(path, status));
    return FileEntrySource(std::move(path), status);
}

std::uint64_t FileEntrySource::size() const {
    return static_cast<std::uint64_t>(m_status.st_size);
}

ErrorOr<void> FileEntrySource::open() {
    struct stat status {};
    m_fd = TRY(openRegularFile(m_path, status));
    ::posix_fadvise(m_fd.get(), 0, 0, POSIX_FADV_SEQUENTIAL);
    return {};
}

ErrorOr<std::size_t> FileEntrySource::read(std::span<std::byte> buffer) {
    for (;;) {
        ssize_t got = ::read(m_fd.get(), buffer.data(), buffer.size());
        if (got >= 0) return static_cast<std::size_t>(got);
        if (errno != EINTR) return Error::fromErrno("cannot read " + m_path, errno);
    }
}

void FileEntrySource::close() {
    m_fd = io::FileDescriptor();
}

} // namespace px::archive
