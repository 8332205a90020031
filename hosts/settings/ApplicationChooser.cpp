#include "ApplicationChooser.h"

#include "Texts.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace px::settings {

namespace {

QIcon applicationIcon(const platform::DesktopApplication& application) {
    for (const auto& name : application.icons)
        if (QIcon icon = iconFor(name); !icon.isNull()) return icon;
    return QIcon::fromTheme("application-x-executable");
}

bool matches(const platform::DesktopApplication& application, const QString& words) {
    for (const auto& word : words.split(' ', Qt::SkipEmptyParts))
        if (!qt(application.name).contains(word, Qt::CaseInsensitive) &&
            !qt(application.description).contains(word, Qt::CaseInsensitive) &&
            !qt(application.id).contains(word, Qt::CaseInsensitive))
            return false;
    return true;
}

} // namespace

ApplicationChooser::ApplicationChooser(QWidget* parent,
                                       std::vector<platform::DesktopApplication> applications)
    : QDialog(parent), m_applications(std::move(applications)), m_search(new QLineEdit),
      m_list(new QListWidget) {
    setWindowTitle(text("Settings Choose Application"));
    auto* label = new QLabel(text("Settings Search Applications"));
    label->setBuddy(m_search);
    m_search->setAccessibleName(text("Settings Search Applications"));
    m_search->setClearButtonEnabled(true);
    m_list->setAccessibleName(text("Settings Installed Applications"));
    m_list->setIconSize({24, 24});
    for (std::size_t i = 0; i < m_applications.size(); ++i) {
        auto* row = new QListWidgetItem(applicationIcon(m_applications[i]),
                                        qt(m_applications[i].name), m_list);
        row->setToolTip(qt(m_applications[i].description));
        row->setData(Qt::UserRole, static_cast<int>(i));
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setText(text("OK"));
    buttons->button(QDialogButtonBox::Ok)->setAccessibleName(text("OK"));
    buttons->button(QDialogButtonBox::Cancel)->setText(text("Cancel"));
    buttons->button(QDialogButtonBox::Cancel)->setAccessibleName(text("Cancel"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(m_search);
    layout->addWidget(m_list);
    layout->addWidget(buttons);
    connect(m_search, &QLineEdit::textChanged, this, &ApplicationChooser::filter);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_list, &QListWidget::itemActivated, this, &QDialog::accept);
    if (m_list->count() > 0) m_list->setCurrentRow(0);
    resize(420, 480);
}

void ApplicationChooser::filter(const QString& words) {
    QListWidgetItem* first = nullptr;
    for (int row = 0; row < m_list->count(); ++row) {
        QListWidgetItem* item = m_list->item(row);
        const auto& application = m_applications[item->data(Qt::UserRole).toUInt()];
        item->setHidden(!matches(application, words));
        if (!first && !item->isHidden()) first = item;
    }
    m_list->setCurrentItem(first);
}

std::optional<platform::DesktopApplication> ApplicationChooser::chosenApplication() const {
    QListWidgetItem* item = m_list->currentItem();
    if (!item || item->isHidden()) return std::nullopt;
    return m_applications[item->data(Qt::UserRole).toUInt()];
}

} // namespace px::settings
