#include "WindowShots.h"

#include <QCoreApplication>
#include <QDir>
#include <QGuiApplication>
#include <QScreen>
#include <QThread>

namespace px::gui {

void saveWindowShot(QWidget& window, const char* kind) {
    static int count = 0;
    const QByteArray folder = qgetenv("PXMENU_SCREENSHOT_DIR");
    if (folder.isEmpty() || !window.isVisible()) return;
    QDir().mkpath(QString::fromLocal8Bit(folder));
    // Let the window manager map and the widgets paint before the grab.
    for (int turn = 0; turn < 10; ++turn) {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        QThread::msleep(10);
    }
    QScreen* screen = window.screen() ? window.screen() : QGuiApplication::primaryScreen();
    if (!screen) return;
    const QPixmap shot = screen->grabWindow(window.winId());
    shot.save(QStringLiteral("%1/%2-%3-%4.png")
                  .arg(QString::fromLocal8Bit(folder))
                  .arg(QCoreApplication::applicationPid())
                  .arg(++count, 2, 10, QLatin1Char('0'))
                  .arg(QLatin1String(kind)));
}

} // namespace px::gui
