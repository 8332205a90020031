#include "SessionServer.h"

#include <cerrno>
#include <fcntl.h>
#include <fmt/format.h>
#include <iostream>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace px::gui {

namespace {

ErrorOr<io::FileDescriptor> lockSession(const std::string& path) {
    io::FileDescriptor fd(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    if (!fd.valid()) return Error::fromErrno("cannot open " + path, errno);
    if (::flock(fd.get(), LOCK_EX | LOCK_NB) != 0) {
        if (errno == EWOULDBLOCK)
            return Error{"another pxmenu-extension serves this session", EWOULDBLOCK};
        return Error::fromErrno("cannot lock " + path, errno);
    }
    return fd;
}

ErrorOr<io::FileDescriptor> listenOn(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof(address.sun_path))
        return Error{"the socket path " + path + " is too long", ENAMETOOLONG};
    path.copy(address.sun_path, path.size());
    io::FileDescriptor fd(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (!fd.valid()) return Error::fromErrno("cannot make a socket", errno);
    ::unlink(path.c_str()); // a stale socket: whoever made it no longer holds the lock
    if (::bind(fd.get(), reinterpret_cast<sockaddr*>(&address), sizeof(address)) != 0)
        return Error::fromErrno("cannot bind " + path, errno);
    if (::listen(fd.get(), 64) != 0) return Error::fromErrno("cannot listen on " + path, errno);
    return fd;
}

// Another user's process may reach the socket only through a mistake in the folder's rights;
// it is told why and dropped.
bool fromThisUser(const io::FileDescriptor& fd) {
    auto peer = handoff::peerUser(fd.get());
    if (!peer.isError() && peer.value() == ::getuid()) return true;
    const std::string message =
        peer.isError() ? peer.error().message
                       : fmt::format("a connection from user id {} was refused: this process "
                                     "serves user id {} only",
                                     peer.value(), ::getuid());
    std::cerr << "pxmenu-extension: " << message << '\n';
    (void)handoff::writeAll(
        fd.get(), handoff::encodeReply({handoff::Reply::Kind::Refused, message, {}, {}, 0}));
    return false;
}

} // namespace

ErrorOr<std::unique_ptr<SessionServer>> SessionServer::elect() {
    auto paths = TRY(handoff::sessionPaths());
    auto lock = TRY(lockSession(paths.lock));
    auto listening = TRY(listenOn(paths.socket));
    return std::unique_ptr<SessionServer>(
        new SessionServer(std::move(paths), std::move(lock), std::move(listening)));
}

SessionServer::SessionServer(handoff::SessionPaths paths, io::FileDescriptor lock,
                             io::FileDescriptor listening)
    : m_paths(std::move(paths)), m_lock(std::move(lock)), m_listening(std::move(listening)) {}

void SessionServer::serve() {
    m_notifier = std::make_unique<QSocketNotifier>(m_listening.get(), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &SessionServer::accept);
    accept(); // connections made while the application started
}

SessionServer::~SessionServer() {
    // Still holding the lock: nobody else can have replaced the socket.
    ::unlink(m_paths.socket.c_str());
}

void SessionServer::accept() {
    for (;;) {
        io::FileDescriptor fd(::accept4(m_listening.get(), nullptr, nullptr, SOCK_CLOEXEC));
        if (!fd.valid()) return;
        if (!fromThisUser(fd)) continue;
        auto* connection = new Connection(std::move(fd), this);
        connect(connection, &Connection::closed, connection, &QObject::deleteLater);
        connect(connection, &Connection::received, this,
                [this, connection](const handoff::Request& request) {
                    Q_EMIT requested(connection, request);
                });
    }
}

} // namespace px::gui
