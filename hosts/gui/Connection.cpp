#include "Connection.h"

#include "SessionSocket.h"

#include <cerrno>
#include <iostream>
#include <sys/socket.h>

namespace px::gui {

namespace {

constexpr int kRequestTimeoutMs = 5000;

} // namespace

Connection::Connection(io::FileDescriptor fd, QObject* parent)
    : QObject(parent), m_fd(std::move(fd)),
      m_notifier(std::make_unique<QSocketNotifier>(m_fd.get(), QSocketNotifier::Read)) {
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &Connection::readAvailable);
    m_deadline.setSingleShot(true);
    connect(&m_deadline, &QTimer::timeout, this,
            [this] { refuse("no whole request frame came within 5 seconds"); });
    m_deadline.start(kRequestTimeoutMs);
}

void Connection::readAvailable() {
    char buffer[64 * 1024];
    const ssize_t got = ::recv(m_fd.get(), buffer, sizeof(buffer), MSG_DONTWAIT);
    if (got < 0 && (errno == EINTR || errno == EAGAIN)) return;
    if (got <= 0) {
        if (!m_gotRequest && m_reader.hasPartialFrame())
            return refuse("the request frame was cut short");
        return close();
    }
    if (m_gotRequest) return; // one request a connection; later bytes are ignored
    m_reader.feed({buffer, static_cast<std::size_t>(got)});
    auto frame = m_reader.next();
    if (frame.isError()) return refuse(frame.error().message);
    if (!frame.value()) return;
    auto request = handoff::decodeRequest(*frame.value());
    if (request.isError()) return refuse(request.error().message);
    m_gotRequest = true;
    m_deadline.stop();
    Q_EMIT received(request.value());
}

void Connection::reply(const handoff::Reply& reply) {
    if (!m_fd.valid()) return;
    // A client that went away is no reason to stop.
    (void)handoff::writeAll(m_fd.get(), handoff::encodeReply(reply));
}

void Connection::refuse(const std::string& message) {
    std::cerr << "pxmenu-extension: request refused: " << message << '\n';
    reply({handoff::Reply::Kind::Refused, message, {}, {}, 0});
    close();
}

void Connection::close() {
    m_deadline.stop();
    m_notifier.reset();
    if (!m_fd.valid()) return;
    m_fd = io::FileDescriptor();
    Q_EMIT closed();
}

} // namespace px::gui
