#include "actions/DataCopy.h"

#include <cerrno>
#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace px::filecopy {

namespace {

constexpr std::size_t kRangeChunk = std::size_t{1} << 30;
constexpr std::size_t kBufferSize = std::size_t{1} << 20;
constexpr off_t kSequentialFrom = off_t{1} << 20;

// Errors that say "not this way here" rather than "this copy went wrong".
bool meansUnsupported(int error) {
    return error == EOPNOTSUPP || error == ENOTTY || error == EXDEV || error == EINVAL ||
           error == ENOSYS || error == EBADF || error == ETXTBSY || error == EPERM;
}

bool writeAll(int out, const char* data, std::size_t length) {
    while (length > 0) {
        const ssize_t put = ::write(out, data, length);
        if (put < 0 && errno == EINTR) continue;
        if (put == 0) errno = EIO;
        if (put <= 0) return false;
        data += put;
        length -= static_cast<std::size_t>(put);
    }
    return true;
}

} // namespace

ErrorOr<void> DataCopy::copy(int in, int out, off_t size) {
    // A larger read-ahead for large files that are not in memory yet.
    if (size >= kSequentialFrom) ::posix_fadvise(in, 0, 0, POSIX_FADV_SEQUENTIAL);
    Outcome outcome = Outcome::Unsupported;
    // An empty-looking file (procfs and the like report 0) is read to its end instead.
    if (size > 0 && m_cloneWorks) outcome = clone(in, out);
    if (outcome == Outcome::Unsupported && size > 0 && m_rangeWorks) outcome = copyRange(in, out);
    if (outcome == Outcome::Unsupported) outcome = readWrite(in, out);
    if (outcome == Outcome::Done) return {};
    return Error::fromErrno("cannot copy the contents", m_errno);
}

DataCopy::Outcome DataCopy::clone(int in, int out) {
    if (::ioctl(out, FICLONE, in) == 0) return Outcome::Done;
    m_errno = errno;
    if (!meansUnsupported(m_errno)) return Outcome::Failed;
    m_cloneWorks = false;
    return Outcome::Unsupported;
}

// copy_file_range moves the bytes inside the kernel; where it refuses before any byte moved,
// the plain way takes over from the start (for this file only when the refusal was a zero).
DataCopy::Outcome DataCopy::copyRange(int in, int out) {
    bool movedAny = false;
    for (;;) {
        const ssize_t moved = ::copy_file_range(in, nullptr, out, nullptr, kRangeChunk, 0);
        // Nothing at all from a file that had bytes: some pseudo file systems answer so, and
        // reading them works.
        if (moved == 0) return movedAny ? Outcome::Done : Outcome::Unsupported;
        if (moved > 0) {
            movedAny = true;
            continue;
        }
        if (errno == EINTR) continue;
        m_errno = errno;
        if (movedAny || !meansUnsupported(m_errno)) return Outcome::Failed;
        m_rangeWorks = false;
        return Outcome::Unsupported;
    }
}

DataCopy::Outcome DataCopy::readWrite(int in, int out) {
    if (!m_buffer) m_buffer = std::make_unique<char[]>(kBufferSize);
    for (;;) {
        const ssize_t got = ::read(in, m_buffer.get(), kBufferSize);
        if (got == 0) return Outcome::Done;
        if (got < 0 && errno == EINTR) continue;
        if (got < 0 || !writeAll(out, m_buffer.get(), static_cast<std::size_t>(got))) {
            m_errno = errno;
            return Outcome::Failed;
        }
    }
}

} // namespace px::filecopy
