#include "QtPasteboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QThread>
#include <nlohmann/json.hpp>

namespace px::gui {

namespace {

// QClipboard lives on the GUI thread; other threads hand the call over and wait.
template <typename Call> void onGuiThread(Call call) {
    if (QThread::currentThread() == qApp->thread()) return call();
    QMetaObject::invokeMethod(qApp, call, Qt::BlockingQueuedConnection);
}

} // namespace

bool QtPasteboard::ownsClipboard() {
    return QGuiApplication::clipboard()->ownsClipboard();
}

void QtPasteboard::clearContents() {
    onGuiThread([] { QGuiApplication::clipboard()->clear(QClipboard::Clipboard); });
}

void QtPasteboard::setString(const std::string& text) {
    onGuiThread([&text] {
        QGuiApplication::clipboard()->setText(QString::fromStdString(text), QClipboard::Clipboard);
    });
    if (m_transcript) m_transcript->write({{"clipboard", text}});
}

std::optional<std::string> QtPasteboard::string() {
    std::optional<std::string> result;
    onGuiThread([&result] {
        const QMimeData* data = QGuiApplication::clipboard()->mimeData(QClipboard::Clipboard);
        if (data && data->hasText()) result = QGuiApplication::clipboard()->text().toStdString();
    });
    return result;
}

} // namespace px::gui
