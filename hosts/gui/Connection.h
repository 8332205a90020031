#pragma once

#include "Frame.h"
#include "Messages.h"
#include "support/FileIO.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <memory>

namespace px::gui {

// One client connection: reads the request frame as it arrives, without blocking the loop. A
// malformed, oversized or truncated frame, or none within a few seconds, gets a Refused reply
// with the reason and the connection is closed; the process goes on serving.
class Connection final : public QObject {
    Q_OBJECT
  public:
    explicit Connection(io::FileDescriptor fd, QObject* parent = nullptr);

    void reply(const handoff::Reply& reply);
    // Refuses with the message (also written to standard error) and closes.
    void refuse(const std::string& message);
    bool isOpen() const { return m_fd.valid(); }

  Q_SIGNALS:
    void received(const handoff::Request& request);
    void closed();

  private:
    void readAvailable();
    void close();

    io::FileDescriptor m_fd;
    std::unique_ptr<QSocketNotifier> m_notifier;
    handoff::FrameReader m_reader;
    QTimer m_deadline;
    bool m_gotRequest = false;
};

} // namespace px::gui
