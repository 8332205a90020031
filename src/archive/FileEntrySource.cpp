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
    m_fd = TRY(openRegularFile(m_path, m_status));
    ::posix_fadvise(m_fd.get(), 0, 0, POSIX_FADV_SEQUENTIAL);
    return {};
}

ErrorOr<std::size_t> FileEntrySource::readAt(std::uint64_t offset, std::span<std::byte> buffer) {
    std::size_t filled = 0;
    while (filled < buffer.size()) {
        ssize_t got = ::pread(m_fd.get(), buffer.data() + filled, buffer.size() - filled,
                              static_cast<off_t>(offset + filled));
        if (got == 0) break;
        if (got > 0)
            filled += static_cast<std::size_t>(got);
        else if (errno != EINTR)
            return Error::fromErrno("cannot read " + m_path, errno);
    }
    return filled;
}

void FileEntrySource::close() {
    m_fd = io::FileDescriptor();
}

} // namespace px::archive
