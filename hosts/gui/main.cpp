// pxmenu-extension: the one process of a user session that shows the windows, runs the jobs
// and holds the clipboard for the requests `pxmenu run --ui gui` hands over.
#include "ColorPicker.h"
#include "IdleWatch.h"
#include "QtPasteboard.h"
#include "QtUi.h"
#include "QueuePump.h"
#include "RequestRunner.h"
#include "SessionServer.h"
#include "support/Queues.h"

#include <QApplication>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string_view>

namespace {

constexpr int kDefaultIdleSeconds = 180;

int idleSeconds(int argc, char** argv) {
    for (int index = 1; index + 1 < argc; ++index)
        if (std::string_view(argv[index]) == "--idle-seconds") return std::atoi(argv[index + 1]);
    if (const char* chosen = std::getenv("PXMENU_IDLE_SECONDS")) return std::atoi(chosen);
    return kDefaultIdleSeconds;
}

// On an X display (XWayland included) the xcb platform is used, so that the clipboard can be
// set without a focused window, as Wayland would require.
void chooseXcb() {
    if (std::getenv("QT_QPA_PLATFORM") == nullptr && std::getenv("DISPLAY") != nullptr)
        ::setenv("QT_QPA_PLATFORM", "xcb", 1);
}

const char* busyReason(const px::gui::RequestRunner& runner, const px::gui::QtUi& ui) {
    if (runner.isBusy()) return "a request";
    if (!px::queue::isIdle()) return "queue work";
    if (ui.hasOpenWindow()) return "an open window";
    if (px::gui::QtPasteboard::ownsClipboard()) return "the clipboard";
    return nullptr;
}

} // namespace

int main(int argc, char** argv) {
    auto server = px::gui::SessionServer::elect();
    if (server.isError()) {
        std::cerr << "pxmenu-extension: " << server.error().message << '\n';
        return server.error().code == EWOULDBLOCK ? 0 : 1;
    }
    chooseXcb();
    QApplication application(argc, argv);
    application.setQuitOnLastWindowClosed(false);
    application.setApplicationName(QStringLiteral("pxmenu"));
    QGuiApplication::setDesktopFileName(QStringLiteral("pxmenu-extension"));
    px::gui::QueuePump pump;
    px::gui::ColorPicker colors;
    auto ui = std::make_shared<px::gui::QtUi>(pump, colors);
    auto pasteboard = std::make_shared<px::gui::QtPasteboard>();
    px::gui::RequestRunner runner(ui, pasteboard, pump);
    pump.setOnTurn([&runner] { runner.check(); });
    QObject::connect(server.value().get(), &px::gui::SessionServer::requested, &runner,
                     &px::gui::RequestRunner::enqueue);
    server.value()->serve();
    px::gui::IdleWatch idle(std::chrono::seconds(idleSeconds(argc, argv)),
                            [&] { return busyReason(runner, *ui); });
    return application.exec();
}
