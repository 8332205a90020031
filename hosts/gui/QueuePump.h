#pragma once

#include <QObject>
#include <QTimer>

namespace px::gui {

// Pumps the core's main queue from the Qt event loop: a post from any thread wakes the loop,
// a timer waits for the next delayed task. While a Ui call is open (a modal window's nested
// loop) nothing is pumped, so queued tasks never run out of order inside a prompt; the pump
// resumes when the call returns.
class QueuePump final : public QObject {
    Q_OBJECT
  public:
    QueuePump();
    ~QueuePump() override;

    // A Ui call is under way for the object's life.
    class UiCall {
      public:
        explicit UiCall(QueuePump& pump);
        ~UiCall();
        UiCall(const UiCall&) = delete;
        UiCall& operator=(const UiCall&) = delete;

      private:
        QueuePump& m_pump;
    };

    // Called after every turn that ran tasks and whenever the queues may have gone idle.
    void setOnTurn(std::function<void()> onTurn) { m_onTurn = std::move(onTurn); }
    bool insideUiCall() const { return m_uiCalls > 0; }

  public Q_SLOTS:
    void pump();

  private:
    void schedule();

    QTimer m_delayed;
    int m_uiCalls = 0;
    std::function<void()> m_onTurn;
};

} // namespace px::gui
