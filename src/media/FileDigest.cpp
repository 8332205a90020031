// Digests of whole files, streamed through a small ring of fixed buffers filled ahead.
#include "media/Digest.h"
#include "media/ReadAhead.h"
#include "support/FileIO.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace px::digest {

namespace {

// Opens a regular file for one sequential read. Non-blocking while opening, so that a pipe
// without a writer cannot hold the caller; the check that follows refuses it anyway.
ErrorOr<io::FileDescriptor> openRegularFile(const std::string& path) {
    io::FileDescriptor fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK));
    if (!fd.valid()) return Error::fromErrno("cannot open " + path, errno);
    struct stat info {};
    if (::fstat(fd.get(), &info) != 0) return Error::fromErrno("cannot inspect " + path, errno);
    if (!S_ISREG(info.st_mode)) return Error{path + " is not a regular file", EINVAL};
    ::fcntl(fd.get(), F_SETFL, ::fcntl(fd.get(), F_GETFL) & ~O_NONBLOCK);
    ::posix_fadvise(fd.get(), 0, 0, POSIX_FADV_SEQUENTIAL);
    return fd;
}

} // namespace

ErrorOr<std::string> digestOfFile(const std::string& path, Context& context) {
    io::FileDescriptor fd = TRY(openRegularFile(path));
    TRY(context.initialise());
    ReadAhead reader(fd.get(), path, kReadBufferSize, kReadAheadDepth);
    for (auto chunk = TRY(reader.next()); !chunk.empty(); chunk = TRY(reader.next()))
        TRY(context.update(chunk));
    std::vector<unsigned char> bytes = TRY(context.finalise());
    return hexText(bytes);
}

ErrorOr<std::string> digestOfFile(const std::string& path, Algorithm algorithm) {
    Context context(algorithm);
    return digestOfFile(path, context);
}

} // namespace px::digest

namespace px::filehash {

namespace {

std::optional<std::string> hashWith(const std::string& path, digest::Algorithm algorithm) {
    digest::Context context(algorithm);
    return hashOfFileAtPath(path, context);
}

} // namespace

std::optional<std::string> hashOfFileAtPath(const std::string& path, digest::Context& context) {
    auto text = digest::digestOfFile(path, context);
    if (text.isError()) return std::nullopt;
    return text.releaseValue();
}

std::optional<std::string> md5HashOfFileAtPath(const std::string& path) {
    return hashWith(path, digest::Algorithm::MD5);
}

std::optional<std::string> sha1HashOfFileAtPath(const std::string& path) {
    return hashWith(path, digest::Algorithm::SHA1);
}

std::optional<std::string> sha256HashOfFileAtPath(const std::string& path) {
    return hashWith(path, digest::Algorithm::SHA256);
}

std::optional<std::string> sha512HashOfFileAtPath(const std::string& path) {
    return hashWith(path, digest::Algorithm::SHA512);
}

} // namespace px::filehash
