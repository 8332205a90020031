#include "ColorPicker.h"

#include "Texts.h"
#include "WindowShots.h"
#include "platform/Settings.h"
#include "platform/linux/UserStore.h"

#include <QCursor>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QEventLoop>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPainter>
#include <QPainterPath>
#include <QRandomGenerator>
#include <QScreen>
#include <QTimer>

namespace px::gui {

namespace {

constexpr int kMagnifierSize = 80;
constexpr int kZoom = 7;
constexpr int kSpan = kMagnifierSize / kZoom; // screen pixels shown across: 11
const QColor kMarker(233, 87, 71);
constexpr int kPortalTimeoutMs = 120000;

// The portal's Response signal, caught by a receiver object.
class PortalResponse final : public QObject {
    Q_OBJECT
  public:
    QEventLoop loop;
    std::optional<platform::Ui::Color> color;
    bool answered = false;

  public Q_SLOTS:
    void onResponse(uint response, const QVariantMap& results) {
        answered = true;
        if (response == 0 && results.contains(QStringLiteral("color"))) {
            const QDBusArgument argument =
                results.value(QStringLiteral("color")).value<QDBusArgument>();
            double red = 0, green = 0, blue = 0;
            argument.beginStructure();
            argument >> red >> green >> blue;
            argument.endStructure();
            color = platform::Ui::Color{red, green, blue};
        }
        loop.quit();
    }
};

void showScreenRecordTipOnce() {
    const auto defaults = platform::openStandardDefaults();
    if (defaults->boolForKey("Screen Record Tip")) return;
    defaults->setBool("Screen Record Tip", true);
    QMessageBox::information(nullptr, QStringLiteral("pxmenu"), tr("Screen Record Tip"));
}

bool onWayland() {
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

} // namespace

std::optional<platform::Ui::Color> portalPickColor(bool& answered) {
    answered = false;
    auto bus = QDBusConnection::sessionBus();
    const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
    if (!bus.isConnected() || !bus.interface()->isServiceRegistered(service).value())
        return std::nullopt;
    const QString token = QStringLiteral("pxmenu%1").arg(QRandomGenerator::global()->generate());
    QString sender = bus.baseService().mid(1).replace(QLatin1Char('.'), QLatin1Char('_'));
    const QString handle =
        QStringLiteral("/org/freedesktop/portal/desktop/request/%1/%2").arg(sender, token);
    PortalResponse response;
    bus.connect(service, handle, QStringLiteral("org.freedesktop.portal.Request"),
                QStringLiteral("Response"), &response, SLOT(onResponse(uint, QVariantMap)));
    QDBusMessage call = QDBusMessage::createMethodCall(
        service, QStringLiteral("/org/freedesktop/portal/desktop"),
        QStringLiteral("org.freedesktop.portal.Screenshot"), QStringLiteral("PickColor"));
    call << QString() << QVariantMap{{QStringLiteral("handle_token"), token}};
    const QDBusMessage reply = bus.call(call);
    if (reply.type() == QDBusMessage::ErrorMessage) return std::nullopt;
    QTimer::singleShot(kPortalTimeoutMs, &response.loop, &QEventLoop::quit);
    if (!response.answered) response.loop.exec();
    answered = response.answered;
    return response.color;
}

std::optional<platform::Ui::Color> ColorPicker::pick() {
    m_picking = true;
    struct Done {
        bool& flag;
        ~Done() { flag = false; }
    } done{m_picking};
    bool answered = false;
    auto color = portalPickColor(answered);
    if (answered) return color;
    if (onWayland()) {
        QMessageBox::warning(nullptr, QStringLiteral("pxmenu"), tr("No Color Picker Tip"));
        return std::nullopt;
    }
    showScreenRecordTipOnce();
    return pickWithMagnifier();
}

std::optional<platform::Ui::Color> ColorPicker::pickWithMagnifier() {
    Magnifier magnifier;
    auto color = magnifier.run();
    if (!color) return std::nullopt;
    return platform::Ui::Color{color->redF(), color->greenF(), color->blueF()};
}

Magnifier::Magnifier() {
    setWindowFlags(Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    setFixedSize(kMagnifierSize, kMagnifierSize);
    setCursor(Qt::BlankCursor);
}

std::optional<QColor> Magnifier::run() {
    QTimer follower;
    connect(&follower, &QTimer::timeout, this, &Magnifier::follow);
    follower.start(16);
    follow();
    show();
    grabMouse(Qt::BlankCursor);
    grabKeyboard();
    saveWindowShot(*this, "magnifier");
    QEventLoop loop;
    while (!m_done && isVisible())
        loop.processEvents(QEventLoop::WaitForMoreEvents);
    releaseMouse();
    releaseKeyboard();
    hide();
    return m_result;
}

void Magnifier::follow() {
    const QPoint at = QCursor::pos();
    QScreen* screen = QGuiApplication::screenAt(at);
    if (!screen) return;
    const QPoint local = at - screen->geometry().topLeft();
    m_area =
        screen->grabWindow(0, local.x() - kSpan / 2, local.y() - kSpan / 2, kSpan, kSpan).toImage();
    // Beside the pointer rather than centred on it: the root window's capture would show the
    // magnifier itself.
    move(at + QPoint(kMagnifierSize / 4, kMagnifierSize / 4));
    update();
}

void Magnifier::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QPainterPath circle;
    circle.addEllipse(QRectF(rect()).adjusted(1, 1, -1, -1));
    painter.setClipPath(circle);
    if (!m_area.isNull()) painter.drawImage(rect(), m_area);
    painter.setPen(QPen(kMarker, 1));
    painter.drawRect(width() / 2 - 3, height() / 2 - 3, 6, 6);
    painter.setClipping(false);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(kMarker, 2));
    painter.drawEllipse(QRectF(rect()).adjusted(1, 1, -1, -1));
}

void Magnifier::mousePressEvent(QMouseEvent*) {
    follow();
    if (!m_area.isNull()) m_result = m_area.pixelColor(kSpan / 2, kSpan / 2);
    m_done = true;
}

void Magnifier::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) m_done = true;
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) mousePressEvent(nullptr);
}

} // namespace px::gui

#include "ColorPicker.moc"
