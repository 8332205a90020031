// pxmenu-settings: the window in which people edit the menus and preferences.
#include "ConfigStore.h"
#include "Prompts.h"
#include "SettingsWindow.h"
#include "StartupMessages.h"
#include "Texts.h"
#include "platform/linux/UserStore.h"
#include "support/BuildConfig.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QIcon>
#include <QTimer>
#include <chrono>
#include <clocale>
#include <cstdio>

namespace {

using Clock = std::chrono::steady_clock;

// Quits after the window's first paint, printing how long start-up took (for the benchmark).
class FirstPaintProbe final : public QObject {
  public:
    explicit FirstPaintProbe(Clock::time_point started) : m_started(started) {}

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && !m_seen) {
            m_seen = true;
            QTimer::singleShot(0, [this] {
                auto elapsed = std::chrono::duration<double, std::milli>(Clock::now() - m_started);
                std::printf("first paint %.1f ms\n", elapsed.count());
                QApplication::quit();
            });
        }
        return QObject::eventFilter(watched, event);
    }

  private:
    Clock::time_point m_started;
    bool m_seen = false;
};

} // namespace

int main(int argc, char** argv) {
    const auto started = Clock::now();
    std::setlocale(LC_ALL, "");
    QApplication app(argc, argv);
    QApplication::setApplicationName("pxmenu-settings");
    QApplication::setApplicationVersion(QString::fromUtf8(px::kProductVersion));
    QApplication::setDesktopFileName("pxmenu-settings");
    px::settings::setUpIconTheme();
    QCommandLineParser options;
    options.addHelpOption();
    options.addVersionOption();
    QCommandLineOption firstPaint("first-paint-exit",
                                  "Print the time from start to the first paint and quit.");
    options.addOption(firstPaint);
    options.process(app);

    px::settings::ConfigStore store(px::platform::openUserStore());
    const auto start = px::startup::prepareSettings(store.manager(), store.settingsFile());
    px::settings::DialogPrompts prompts;
    px::settings::SettingsWindow window(store, prompts);
    FirstPaintProbe probe(started);
    if (options.isSet(firstPaint))
        window.installEventFilter(&probe);
    else
        QTimer::singleShot(0, &window, [&] {
            if (px::settings::showStartupMessages(start, store.manager(), prompts, &window))
                window.reloadAll();
        });
    window.show();
    return QApplication::exec();
}
