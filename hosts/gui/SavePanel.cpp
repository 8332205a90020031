#include "SavePanel.h"

#include "Texts.h"
#include "platform/PromptSupport.h"

#include <QDialogButtonBox>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QMessageBox>

namespace px::gui {

namespace {

QPushButton& acceptButtonOf(QFileDialog& dialog) {
    auto* box = dialog.findChild<QDialogButtonBox*>(QStringLiteral("buttonBox"));
    for (QAbstractButton* button : box->buttons())
        if (box->buttonRole(button) == QDialogButtonBox::AcceptRole)
            return *static_cast<QPushButton*>(button);
    return *static_cast<QPushButton*>(box->buttons().front());
}

QLineEdit& nameFieldOf(QFileDialog& dialog) {
    return *dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
}

void addMessage(QFileDialog& dialog, const std::string& message) {
    if (message.empty()) return;
    auto* grid = static_cast<QGridLayout*>(dialog.layout());
    auto* label = new QLabel(qs(message));
    label->setWordWrap(true);
    // Above everything else: the grid's first row moves down.
    auto* holder = new QWidget;
    auto* inner = new QGridLayout(holder);
    inner->setContentsMargins(0, 0, 0, 0);
    inner->addWidget(label);
    grid->addWidget(holder, grid->rowCount(), 0, 1, grid->columnCount());
}

} // namespace

SavePanel::SavePanel(const platform::Ui::SaveRequest& request) : m_request(request) {
    setOption(QFileDialog::DontUseNativeDialog);
    setOption(QFileDialog::DontConfirmOverwrite);
    setAcceptMode(QFileDialog::AcceptSave);
    setFileMode(QFileDialog::AnyFile);
    setDirectory(qs(request.directory));
    selectFile(qs(request.name));
    setLabelText(QFileDialog::Accept, tr("Save"));
    setLabelText(QFileDialog::Reject, tr("Cancel"));
    addMessage(*this, request.message);
    if (request.passwordAccessory) {
        m_password = new QLineEdit;
        m_password->setEchoMode(QLineEdit::Password);
        m_password->setObjectName(QStringLiteral("passwordField"));
        addRow(tr("Password") + QLatin1Char(':'), m_password);
    }
    if (!request.fileTypes.empty()) {
        m_types = new QComboBox;
        m_types->setObjectName(QStringLiteral("fileTypeChooser"));
        for (const auto& type : request.fileTypes)
            m_types->addItem(QIcon::fromTheme(qs(type.icon)), qs(type.title));
        addRow(tr("File Type") + QLatin1Char(':'), m_types);
        connect(m_types, &QComboBox::currentIndexChanged, this, &SavePanel::typeChanged);
        typeChanged(0);
    }
    setWindowTitle(tr("Save"));
}

void SavePanel::addRow(const QString& label, QWidget* field) {
    auto* grid = static_cast<QGridLayout*>(layout());
    const int row = grid->rowCount();
    grid->addWidget(new QLabel(label), row, 0);
    grid->addWidget(field, row, 1, 1, grid->columnCount() - 1);
    // Tab reaches the accessory rows after the name field.
    setTabOrder(&nameField(), field);
}

void SavePanel::typeChanged(int index) {
    if (index < 0 || static_cast<std::size_t>(index) >= m_request.fileTypes.size()) return;
    QString name = nameField().text();
    if (m_typeShown >= 0) {
        const QString old =
            qs(m_request.fileTypes[static_cast<std::size_t>(m_typeShown)].extension);
        if (!old.isEmpty() && name.endsWith(QLatin1Char('.') + old, Qt::CaseInsensitive))
            name.chop(old.size() + 1);
    }
    const QString extension = qs(m_request.fileTypes[static_cast<std::size_t>(index)].extension);
    if (!extension.isEmpty() && !name.isEmpty()) name += QLatin1Char('.') + extension;
    if (m_typeShown >= 0 || name != nameField().text()) nameField().setText(name);
    m_typeShown = index;
    if (m_request.onTypeChosen)
        m_request.onTypeChosen(m_request.fileTypes[static_cast<std::size_t>(index)].tag);
}

QLineEdit& SavePanel::nameField() {
    return nameFieldOf(*this);
}

QPushButton& SavePanel::confirmButton() {
    return acceptButtonOf(*this);
}

QString SavePanel::chosenPath() const {
    const QStringList files = selectedFiles();
    return files.isEmpty() ? QString() : files.front();
}

void SavePanel::accept() {
    const QString path = nameField().text().startsWith(QLatin1Char('/'))
                             ? nameField().text()
                             : directory().absoluteFilePath(nameField().text());
    if (m_request.confirmsOverwrite && !m_silentOverwrite && QFileInfo::exists(path) &&
        !QFileInfo(path).isDir()) {
        QMessageBox question(QMessageBox::Warning, tr("Save"),
                             qs(platform::overwriteQuestion(path.toStdString())),
                             QMessageBox::NoButton, this);
        auto* replace = question.addButton(tr("Replace"), QMessageBox::AcceptRole);
        question.setDefaultButton(question.addButton(tr("Cancel"), QMessageBox::RejectRole));
        question.exec();
        if (question.clickedButton() != replace) return;
    }
    QFileDialog::accept();
}

OpenPanel::OpenPanel(const platform::Ui::OpenRequest& request) {
    setOption(QFileDialog::DontUseNativeDialog);
    setAcceptMode(QFileDialog::AcceptOpen);
    if (request.chooseDirectories && !request.chooseFiles) {
        setFileMode(QFileDialog::Directory);
        setOption(QFileDialog::ShowDirsOnly);
    } else {
        setFileMode(QFileDialog::ExistingFile);
    }
    setDirectory(qs(request.directory));
    if (!request.button.empty()) setLabelText(QFileDialog::Accept, qs(request.button));
    setLabelText(QFileDialog::Reject, tr("Cancel"));
    addMessage(*this, request.message);
    setWindowTitle(request.button.empty() ? tr("Open") : qs(request.button));
}

QLineEdit& OpenPanel::nameField() {
    return nameFieldOf(*this);
}

QPushButton& OpenPanel::confirmButton() {
    return acceptButtonOf(*this);
}

} // namespace px::gui
