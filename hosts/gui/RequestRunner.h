#pragma once

#include "Connection.h"
#include "QtPasteboard.h"
#include "QtUi.h"

#include <QPointer>
#include <QTimer>
#include <deque>
#include <memory>
#include <sstream>

namespace px::gui {

// Runs the requests one at a time, in the order they came: each is accepted at once and waits
// while an earlier one is under way (a window open, queue work left, delayed work included).
// A request that asked to wait gets the transcript, what the command wrote to standard error
// and the exit status once its work is over.
class RequestRunner final : public QObject {
    Q_OBJECT
  public:
    RequestRunner(std::shared_ptr<QtUi> ui, std::shared_ptr<QtPasteboard> pasteboard,
                  QueuePump& pump);
    ~RequestRunner() override;

    void enqueue(Connection* connection, const handoff::Request& request);
    // Finishes the running request when its work is over and starts the next.
    void check();
    bool isBusy() const { return m_current != nullptr || !m_waiting.empty(); }

  private:
    struct Pending {
        QPointer<Connection> connection;
        handoff::Request request;
    };
    struct Running;

    void start(Pending pending);
    void finish();

    std::shared_ptr<QtUi> m_ui;
    std::shared_ptr<QtPasteboard> m_pasteboard;
    QueuePump& m_pump;
    std::deque<Pending> m_waiting;
    std::unique_ptr<Running> m_current;
    bool m_starting = false;
    QTimer m_poll;
};

} // namespace px::gui
