#include "EntryDialogs.h"

#include "Texts.h"

#include <QFormLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace px::gui {

EntryDialog::EntryDialog(const QString& title, std::function<bool(const QString&)> check)
    : m_name(new QLineEdit),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel)),
      m_check(std::move(check)) {
    setWindowTitle(title);
    okButton().setText(tr("OK"));
    cancelButton().setText(tr("Cancel"));
    okButton().setDefault(true);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(new QFormLayout);
    layout->addWidget(m_buttons);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_name, &QLineEdit::textChanged, this, &EntryDialog::recheck);
    setMinimumWidth(360);
}

void EntryDialog::addRow(const QString& label, QWidget* field) {
    auto* form = static_cast<QFormLayout*>(layout()->itemAt(0)->layout());
    form->addRow(label, field);
}

void EntryDialog::recheck() {
    okButton().setEnabled(!m_check || m_check(m_name->text()));
}

EmbedDialog::EmbedDialog(const platform::Ui::EmbedRequest& request)
    : EntryDialog(tr("Embed in Folder"),
                  [check = request.nameCheck](const QString& name) {
                      return !check || check(name.toStdString());
                  }),
      m_modes(new QComboBox) {
    addRow(tr("Folder Name") + QLatin1Char(':'), &nameField());
    for (const auto& mode : request.modes)
        m_modes->addItem(qs(mode));
    addRow(tr("Mode") + QLatin1Char(':'), m_modes);
    nameField().setText(qs(request.defaultName));
    nameField().selectAll();
    setTabOrder(&nameField(), m_modes);
    recheck();
}

NameEntryDialog::NameEntryDialog(const platform::Ui::NameRequest& request)
    : EntryDialog(QStringLiteral("pxmenu"), [required = request.required](const QString& name) {
          return !required || !name.trimmed().isEmpty();
      }) {
    addRow(qs(request.tip), &nameField());
    nameField().setPlaceholderText(qs(request.placeholder));
    nameField().setText(qs(request.defaultText));
    recheck();
}

} // namespace px::gui
