#include "QtUi.h"

#include "ColorPicker.h"
#include "EntryDialogs.h"
#include "SavePanel.h"
#include "Texts.h"
#include "WindowShots.h"
#include "platform/PromptSupport.h"

#include <QDialogButtonBox>
#include <QFileSystemModel>
#include <QMessageBox>
#include <QTimer>

namespace px::gui {

namespace {

// Runs `act` once the window's modal loop has started and the window is mapped.
void whenShown(QWidget& window, const char* kind, std::function<void()> act) {
    QTimer::singleShot(0, &window, [&window, kind, act = std::move(act)] {
        saveWindowShot(window, kind);
        act();
    });
}

// A file dialog acted on before its folder has loaded would have the typed name replaced by
// the selection the load makes: wait for the load (or at most two seconds).
void whenLoaded(QFileDialog& dialog, const char* kind, std::function<void()> act) {
    auto done = std::make_shared<bool>(false);
    auto once = [&dialog, kind, act = std::move(act), done] {
        if (*done) return;
        *done = true;
        whenShown(dialog, kind, act);
    };
    if (auto* model = dialog.findChild<QFileSystemModel*>())
        QObject::connect(model, &QFileSystemModel::directoryLoaded, &dialog, once,
                         Qt::QueuedConnection);
    QTimer::singleShot(2000, &dialog, once);
}

void clickReject(QFileDialog& dialog) {
    auto* box = dialog.findChild<QDialogButtonBox*>(QStringLiteral("buttonBox"));
    for (QAbstractButton* button : box->buttons())
        if (box->buttonRole(button) == QDialogButtonBox::RejectRole) return button->click();
    dialog.reject();
}

void chooseType(QComboBox* chooser, const platform::Ui::SaveRequest& request,
                std::optional<std::size_t> tag) {
    if (!chooser || !tag) return;
    for (std::size_t index = 0; index < request.fileTypes.size(); ++index)
        if (request.fileTypes[index].tag == *tag) chooser->setCurrentIndex(static_cast<int>(index));
}

// Counts a window as open for the idle check while it is shown.
class OpenWindow {
  public:
    explicit OpenWindow(int& count) : m_count(++count) {}
    ~OpenWindow() { --m_count; }
    OpenWindow(const OpenWindow&) = delete;
    OpenWindow& operator=(const OpenWindow&) = delete;

  private:
    int& m_count;
};

} // namespace

QtUi::QtUi(QueuePump& pump, ColorPicker& colors) : m_pump(pump), m_colors(colors) {}

QtUi::~QtUi() = default;

bool QtUi::hasOpenWindow() const {
    return m_openDialogs > 0 || (m_progress && m_progress->isVisible()) || m_colors.isPicking();
}

int QtUi::runAlert(const Alert& alert) {
    QueuePump::UiCall call(m_pump);
    OpenWindow open(m_openDialogs);
    QMessageBox box(QMessageBox::Information, QStringLiteral("pxmenu"), qs(alert.message));
    box.setInformativeText(qs(alert.informative));
    std::vector<std::string> titles = alert.buttons;
    if (titles.empty()) titles.push_back(localized("OK"));
    std::vector<QPushButton*> buttons;
    for (const auto& title : titles) // one role keeps them in the order given
        buttons.push_back(box.addButton(qs(title), QMessageBox::ActionRole));
    box.setDefaultButton(buttons.front());
    const int cancel = platform::alertCancelResult(alert);
    box.setEscapeButton(buttons[static_cast<std::size_t>(cancel - platform::kFirstAlertButton)]);
    if (m_script) {
        const int answer = m_script->alert(alert);
        whenShown(box, "alert", [&buttons, answer] {
            buttons[static_cast<std::size_t>(answer - platform::kFirstAlertButton)]->click();
        });
    }
    box.exec();
    for (std::size_t index = 0; index < buttons.size(); ++index)
        if (box.clickedButton() == buttons[index])
            return platform::kFirstAlertButton + static_cast<int>(index);
    return cancel;
}

std::optional<platform::Ui::SaveResult> QtUi::runSavePanel(const SaveRequest& request) {
    QueuePump::UiCall call(m_pump);
    OpenWindow open(m_openDialogs);
    SavePanel panel(request);
    if (m_script) {
        auto answer = m_script->save(request);
        whenLoaded(panel, "save-panel", [&panel, &request, answer] {
            if (!answer) return clickReject(panel);
            chooseType(panel.typeChooser(), request, answer->typeBefore);
            panel.nameField().setText(qs(answer->path));
            if (panel.passwordField()) panel.passwordField()->setText(qs(answer->password));
            chooseType(panel.typeChooser(), request, answer->typeAfter);
            panel.confirmOverwriteSilently();
            panel.confirmButton().click();
        });
    }
    if (panel.exec() != QDialog::Accepted) return std::nullopt;
    SaveResult result{panel.chosenPath().toStdString(), {}};
    if (panel.passwordField()) result.password = panel.passwordField()->text().toStdString();
    return result;
}

std::optional<std::string> QtUi::runOpenPanel(const OpenRequest& request) {
    QueuePump::UiCall call(m_pump);
    OpenWindow open(m_openDialogs);
    OpenPanel panel(request);
    if (m_script) {
        auto answer = m_script->open(request);
        whenLoaded(panel, "open-panel", [&panel, answer] {
            if (!answer) return clickReject(panel);
            panel.nameField().setText(qs(*answer));
            panel.confirmButton().click();
        });
    }
    if (panel.exec() != QDialog::Accepted || panel.selectedFiles().isEmpty()) return std::nullopt;
    return panel.selectedFiles().front().toStdString();
}

std::optional<std::string> QtUi::runNameEntry(const NameRequest& request) {
    QueuePump::UiCall call(m_pump);
    OpenWindow open(m_openDialogs);
    NameEntryDialog dialog(request);
    if (m_script) {
        auto answer = m_script->name(request);
        whenShown(dialog, "name-entry", [&dialog, answer] {
            if (!answer) return dialog.cancelButton().click();
            dialog.nameField().setText(qs(*answer));
            dialog.okButton().click();
        });
    }
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.nameField().text().toStdString();
}

std::optional<platform::Ui::EmbedResult> QtUi::runEmbedDialog(const EmbedRequest& request) {
    QueuePump::UiCall call(m_pump);
    OpenWindow open(m_openDialogs);
    EmbedDialog dialog(request);
    if (m_script) {
        auto answer = m_script->embed(request);
        whenShown(dialog, "embed", [&dialog, answer] {
            if (!answer) return dialog.cancelButton().click();
            dialog.modeChooser().setCurrentIndex(answer->mode);
            dialog.nameField().setText(qs(answer->name));
            if (dialog.okButton().isEnabled()) return dialog.okButton().click();
            // A name the check refuses leaves OK off. The protocol's answer still stands, so
            // the controller asks again exactly as it does for a script.
            dialog.accept();
        });
    }
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return EmbedResult{dialog.modeChooser().currentIndex(),
                       dialog.nameField().text().toStdString()};
}

std::optional<platform::Ui::Color> QtUi::pickColor() {
    QueuePump::UiCall call(m_pump);
    // A script's colour stands for what the person would pick from the screen.
    if (m_script) return m_script->color();
    return m_colors.pick();
}

void QtUi::progressOpen(std::function<void()> onCancel) {
    if (!m_progress) m_progress = std::make_unique<ProgressWindow>();
    if (m_script) m_script->progressOpened();
    m_progress->open(std::move(onCancel));
}

void QtUi::progressShow(const Progress& progress) {
    QueuePump::UiCall call(m_pump);
    if (!m_progress) m_progress = std::make_unique<ProgressWindow>();
    m_progress->show(progress);
    if (m_script && m_script->progress(progress)) {
        m_progress->cancelButton().click(); // before the shot: the job must hear of it now
        saveWindowShot(*m_progress, "progress");
    }
}

void QtUi::progressClose() {
    if (m_progress) m_progress->close();
}

} // namespace px::gui
