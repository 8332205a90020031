#include "SessionSocket.h"

#include "Frame.h"

#include <cerrno>
#include <cstdlib>
#include <fmt/format.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace px::handoff {

namespace {

ErrorOr<void> checkPrivateFolder(const std::string& folder) {
    struct stat info {};
    if (::lstat(folder.c_str(), &info) != 0)
        return Error::fromErrno("cannot inspect " + folder, errno);
    if (!S_ISDIR(info.st_mode)) return Error{folder + " is not a folder", ENOTDIR};
    if (info.st_uid != ::getuid())
        return Error{fmt::format("{} belongs to user id {}, not to this user", folder, info.st_uid),
                     EPERM};
    if ((info.st_mode & 077) != 0 && ::chmod(folder.c_str(), 0700) != 0)
        return Error::fromErrno("cannot make " + folder + " private", errno);
    return {};
}

} // namespace

ErrorOr<SessionPaths> sessionPaths() {
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    if (!runtime || runtime[0] != '/')
        return Error{"XDG_RUNTIME_DIR is not set to a folder; the extension process needs the "
                     "session's runtime folder",
                     ENOENT};
    SessionPaths paths;
    paths.folder = std::string(runtime) + "/pxmenu";
    if (::mkdir(paths.folder.c_str(), 0700) != 0 && errno != EEXIST)
        return Error::fromErrno("cannot make " + paths.folder, errno);
    TRY(checkPrivateFolder(paths.folder));
    paths.lock = paths.folder + "/lock";
    paths.socket = paths.folder + "/socket";
    return paths;
}

ErrorOr<io::FileDescriptor> connectTo(const std::string& socketPath) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (socketPath.size() >= sizeof(address.sun_path))
        return Error{"the socket path " + socketPath + " is too long", ENAMETOOLONG};
    socketPath.copy(address.sun_path, socketPath.size());
    io::FileDescriptor fd(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (!fd.valid()) return Error::fromErrno("cannot make a socket", errno);
    if (::connect(fd.get(), reinterpret_cast<sockaddr*>(&address), sizeof(address)) != 0)
        return Error::fromErrno("cannot connect to " + socketPath, errno);
    return fd;
}

ErrorOr<void> writeAll(int fd, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::send(fd, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return Error::fromErrno("cannot send to the extension process", errno);
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return {};
}

ErrorOr<Fields> readFrame(int fd, FrameReader& reader, std::chrono::milliseconds timeout) {
    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + timeout;
    char buffer[64 * 1024];
    for (;;) {
        if (auto frame = TRY(reader.next())) return std::move(*frame);
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
        if (left.count() <= 0) return Error{"no answer in time", ETIMEDOUT};
        pollfd waiting{fd, POLLIN, 0};
        const int ready = ::poll(&waiting, 1, static_cast<int>(left.count()));
        if (ready < 0 && errno == EINTR) continue;
        if (ready < 0) return Error::fromErrno("cannot wait for the answer", errno);
        if (ready == 0) continue;
        const ssize_t got = ::recv(fd, buffer, sizeof(buffer), 0);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return Error::fromErrno("cannot read the answer", errno);
        if (got == 0) return Error{"the connection closed before a whole answer came", EPIPE};
        reader.feed({buffer, static_cast<std::size_t>(got)});
    }
}

ErrorOr<uid_t> peerUser(int fd) {
    ucred credentials{};
    socklen_t length = sizeof(credentials);
    if (::getsockopt(fd, SOL_SOCKET, SO_PEERCRED, &credentials, &length) != 0)
        return Error::fromErrno("cannot learn who connected", errno);
    return credentials.uid;
}

} // namespace px::handoff
