#pragma once

#include <QObject>
#include <QTimer>
#include <chrono>
#include <functional>

namespace px::gui {

// Ends the event loop once the process has had nothing to do for the idle time: no request
// running or waiting, no queue work (delayed work included), no window open, and the
// clipboard not owned (on X11 the text goes when its owner exits).
class IdleWatch final : public QObject {
    Q_OBJECT
  public:
    using Busy = std::function<const char*()>; // why the process is busy, or null
    IdleWatch(std::chrono::seconds idleTime, Busy busy);

  private:
    void look();

    std::chrono::seconds m_idleTime;
    Busy m_busy;
    QTimer m_timer;
    std::chrono::steady_clock::time_point m_lastBusy;
};

} // namespace px::gui
