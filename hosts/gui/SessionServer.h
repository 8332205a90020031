#pragma once

#include "Connection.h"
#include "SessionSocket.h"

#include <QObject>
#include <QSocketNotifier>
#include <memory>

namespace px::gui {

// The one serving process of a user session: elected by an exclusive flock on the session's
// lock file, and only then listening on the socket (a stale socket left by a killed process is
// replaced; a live one cannot be, since its owner holds the lock). Connections from another
// user are refused.
class SessionServer final : public QObject {
    Q_OBJECT
  public:
    // An error when another process serves (EWOULDBLOCK) or the endpoint cannot be made.
    static ErrorOr<std::unique_ptr<SessionServer>> elect();
    ~SessionServer() override;

    const handoff::SessionPaths& paths() const { return m_paths; }
    // Starts taking connections; needs the application object.
    void serve();

  Q_SIGNALS:
    void requested(Connection* connection, const handoff::Request& request);

  private:
    SessionServer(handoff::SessionPaths paths, io::FileDescriptor lock,
                  io::FileDescriptor listening);
    void accept();

    handoff::SessionPaths m_paths;
    io::FileDescriptor m_lock;
    io::FileDescriptor m_listening;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace px::gui
