#include "QueuePump.h"

#include "support/Queues.h"

#include <QEventLoop>
#include <QMetaObject>
#include <QPointer>

namespace px::gui {

namespace {

// How often a waiting request looks whether its work is over.
constexpr int kIdleLookMs = 20;

} // namespace

QueuePump::QueuePump() {
    m_delayed.setSingleShot(true);
    connect(&m_delayed, &QTimer::timeout, this, &QueuePump::pump);
    QPointer<QueuePump> self(this);
    queue::markMainThread();
    queue::setMainQueueWake([self] {
        // Any thread: only ask the loop to look.
        if (self) QMetaObject::invokeMethod(self, &QueuePump::pump, Qt::QueuedConnection);
    });
    // A request's runner waits for its work in the event loop, so the windows stay live.
    queue::setIdleWaiter([](const std::function<bool()>& idle) {
        QEventLoop loop;
        QTimer look;
        QObject::connect(&look, &QTimer::timeout, &loop, [&] {
            if (idle()) loop.quit();
        });
        look.start(kIdleLookMs);
        if (!idle()) loop.exec();
    });
}

QueuePump::~QueuePump() {
    queue::setIdleWaiter({});
    queue::setMainQueueWake({});
}

void QueuePump::pump() {
    if (m_uiCalls > 0) return; // resumed when the call ends
    queue::runPendingOnce();
    schedule();
    if (m_onTurn) m_onTurn();
}

void QueuePump::schedule() {
    const auto next = queue::nextMainQueueTurn();
    if (!next) return m_delayed.stop();
    const auto wait = std::chrono::duration_cast<std::chrono::milliseconds>(
        *next - std::chrono::steady_clock::now());
    m_delayed.start(std::max<int>(0, static_cast<int>(wait.count()) + 1));
}

QueuePump::UiCall::UiCall(QueuePump& pump) : m_pump(pump) {
    ++m_pump.m_uiCalls;
}

QueuePump::UiCall::~UiCall() {
    if (--m_pump.m_uiCalls == 0)
        QMetaObject::invokeMethod(&m_pump, &QueuePump::pump, Qt::QueuedConnection);
}

} // namespace px::gui
