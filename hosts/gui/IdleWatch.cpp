#include "IdleWatch.h"

#include <QCoreApplication>
#include <iostream>

namespace px::gui {

IdleWatch::IdleWatch(std::chrono::seconds idleTime, Busy busy)
    : m_idleTime(idleTime), m_busy(std::move(busy)), m_lastBusy(std::chrono::steady_clock::now()) {
    connect(&m_timer, &QTimer::timeout, this, &IdleWatch::look);
    m_timer.start(std::min<int>(1000, static_cast<int>(idleTime.count() * 250) + 50));
}

void IdleWatch::look() {
    const auto now = std::chrono::steady_clock::now();
    if (m_busy()) {
        m_lastBusy = now;
        return;
    }
    if (now - m_lastBusy < m_idleTime) return;
    std::cerr << "pxmenu-extension: idle for " << m_idleTime.count() << " s; leaving\n";
    QCoreApplication::quit();
}

} // namespace px::gui
