#include "ProgressWindow.h"

#include "Texts.h"
#include "support/Queues.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QIcon>
#include <QKeyEvent>
#include <QStyle>
#include <QVBoxLayout>

namespace px::gui {

ProgressWindow::ProgressWindow()
    : m_picture(new QLabel), m_bar(new QProgressBar), m_text(new QLabel),
      m_cancel(new QPushButton(tr("Cancel"))) {
    setWindowTitle(QStringLiteral("pxmenu"));
    setWindowFlags(Qt::Dialog | Qt::WindowStaysOnTopHint);
    setMinimumWidth(320);
    auto* layout = new QVBoxLayout(this);
    m_picture->setAlignment(Qt::AlignCenter);
    const QIcon success = QIcon::fromTheme(QStringLiteral("emblem-ok-symbolic"),
                                           style()->standardIcon(QStyle::SP_DialogApplyButton));
    m_picture->setPixmap(success.pixmap(48, 48));
    layout->addWidget(m_picture);
    layout->addWidget(m_bar);
    m_text->setAlignment(Qt::AlignCenter);
    layout->addWidget(m_text);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_cancel);
    layout->addLayout(buttons);
    m_bar->setTextVisible(false);
    connect(m_cancel, &QPushButton::clicked, this, &ProgressWindow::cancel);
}

void ProgressWindow::open(std::function<void()> onCancel) {
    m_onCancel = std::move(onCancel);
    QWidget::show();
    raise();
}

void ProgressWindow::show(const platform::Ui::Progress& progress) {
    m_picture->setVisible(progress.success);
    m_bar->setVisible(!progress.success);
    if (progress.fraction) {
        m_bar->setRange(0, 1000);
        m_bar->setValue(static_cast<int>(std::clamp(*progress.fraction, 0.0, 1.0) * 1000));
    } else {
        m_bar->setRange(0, 0); // runs without a value
    }
    m_text->setText(qs(progress.text));
    m_cancel->setVisible(progress.cancelShown);
    if (progress.cancelShown) m_cancel->setFocus();
    if (!isVisible()) QWidget::show();
}

void ProgressWindow::close() {
    m_onCancel = nullptr;
    hide();
}

void ProgressWindow::cancel() {
    if (!m_cancel->isVisible() || !m_onCancel) return;
    queue::enterForeground(m_onCancel);
}

void ProgressWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) return cancel();
    QWidget::keyPressEvent(event);
}

void ProgressWindow::closeEvent(QCloseEvent* event) {
    // The window goes when the job ends; closing it early is the same as Cancel.
    event->ignore();
    cancel();
}

} // namespace px::gui
