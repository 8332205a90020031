#include "ListPage.h"

#include "ConfigStore.h"
#include "EntryAdding.h"
#include "Prompts.h"
#include "Texts.h"
#include "config/ListEntries.h"
#include "config/MenuKeys.h"
#include "platform/linux/GioApplications.h"

#include <QHBoxLayout>
#include <QKeySequence>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>
#include <QShowEvent>
#include <QTimer>
#include <QVBoxLayout>

namespace px::settings {

namespace {

enum Role { KeyRole = Qt::UserRole, TitleRole, EnabledRole, RemovableRole };

const char* addingKey(Adding adding) {
    switch (adding) {
    case Adding::Application:
        return "Settings Add Application";
    case Adding::Folder:
        return "Settings Add Folder";
    case Adding::Template:
        return "Settings Add Template";
    case Adding::FolderIcon:
        return "Settings Add Folder Icon";
    case Adding::None:
        break;
    }
    return nullptr;
}

void addShortcut(QWidget* owner, const QKeySequence& keys, const std::function<void()>& action) {
    auto* shortcut = new QShortcut(keys, owner);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    QObject::connect(shortcut, &QShortcut::activated, owner, action);
}

} // namespace

ListPage::ListPage(ConfigStore& store, Prompts& prompts, ListSpec spec, QWidget* parent)
    : QWidget(parent), m_store(store), m_prompts(prompts), m_spec(spec), m_list(new QListWidget),
      m_up(makeButton("Settings Move Up")), m_down(makeButton("Settings Move Down")),
      m_remove(makeButton("Settings Remove")), m_restore(makeButton("Settings Restore Factory")) {
    auto* heading = new QLabel(text(spec.titleKey));
    heading->setBuddy(m_list);
    QFont font = heading->font();
    font.setBold(true);
    heading->setFont(font);
    m_list->setAccessibleName(text(spec.titleKey));
    m_list->setAccessibleDescription(text("Settings List Help"));
    m_list->setToolTip(text("Settings List Help"));
    m_list->setIconSize({20, 20});
    m_list->setUniformItemSizes(true);
    m_list->setDragDropMode(QAbstractItemView::InternalMove);
    m_list->setDefaultDropAction(Qt::MoveAction);
    m_list->setEditTriggers(QAbstractItemView::EditKeyPressed | QAbstractItemView::DoubleClicked);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_up);
    buttons->addWidget(m_down);
    if (const char* key = addingKey(spec.adding)) {
        m_add = makeButton(key);
        buttons->addWidget(m_add);
        connect(m_add, &QPushButton::clicked, this, [this] { add(); });
    }
    buttons->addWidget(m_remove);
    buttons->addStretch();
    buttons->addWidget(m_restore);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(heading);
    layout->addWidget(m_list);
    layout->addLayout(buttons);

    connect(m_up, &QPushButton::clicked, this, [this] { moveBy(-1); });
    connect(m_down, &QPushButton::clicked, this, [this] { moveBy(1); });
    connect(m_remove, &QPushButton::clicked, this, [this] { removeCurrent(); });
    connect(m_restore, &QPushButton::clicked, this, [this] { restore(); });
    connect(m_list, &QListWidget::itemChanged, this, [this](QListWidgetItem* row) {
        if (!m_filling) itemEdited(row);
    });
    connect(m_list, &QListWidget::currentRowChanged, this, [this] { updateButtons(); });
    connect(m_list->model(), &QAbstractItemModel::rowsMoved, this,
            [this](const QModelIndex&, int start, int, const QModelIndex&, int row) {
                if (!m_filling) dropped(start, row);
            });
    addShortcut(this, QKeySequence(Qt::ALT | Qt::Key_Up), [this] { moveBy(-1); });
    addShortcut(this, QKeySequence(Qt::ALT | Qt::Key_Down), [this] { moveBy(1); });
    addShortcut(m_list, QKeySequence::Delete, [this] { removeCurrent(); });
}

// A page is filled when it is first shown, so the window paints without waiting for the pages
// behind the first one.
void ListPage::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (m_stale) reload();
}

void ListPage::reloadWhenShown() {
    if (isVisible())
        reload();
    else
        m_stale = true;
}

QPushButton* ListPage::makeButton(const char* key) {
    auto* button = new QPushButton(text(key));
    button->setAccessibleName(QString(text(key)).remove('&'));
    button->setToolTip(text(std::string(key) + " Tip"));
    return button;
}

void ListPage::reload() {
    m_stale = false;
    const int current = m_list->currentRow();
    m_filling = true;
    m_list->clear();
    const plist::Array entries = m_store.list(m_spec.menuKey);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        auto* row = new QListWidgetItem(m_list);
        PXMenuItem shown = entries::displayItem(m_spec.menuKey, entries[i]);
        const QString title = qt(shown.menuTitle());
        row->setText(title);
        row->setIcon(iconFor(shown.menuIcon()));
        row->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable |
                      Qt::ItemIsEditable | Qt::ItemIsDragEnabled);
        row->setCheckState(shown.disabled ? Qt::Unchecked : Qt::Checked);
        row->setData(KeyRole, qt(entries::keyOf(entries[i])));
        row->setData(TitleRole, title);
        row->setData(EnabledRole, !shown.disabled);
        row->setData(RemovableRole, entries::canRemove(m_spec.menuKey, entries[i]));
        markIfNotInstalled(row);
    }
    m_filling = false;
    if (m_list->count() > 0) m_list->setCurrentRow(std::clamp(current, 0, m_list->count() - 1));
    updateButtons();
}

// Marks an application entry whose application is not installed.
void ListPage::markIfNotInstalled(QListWidgetItem* row) {
    if (m_spec.menuKey != std::string(menukey::kCommonApp)) return;
    if (platform::isApplicationInstalled(utf8(row->data(KeyRole).toString()))) return;
    row->setForeground(palette().brush(QPalette::Disabled, QPalette::Text));
    row->setToolTip(text("Settings Not Installed Tip"));
    row->setData(Qt::AccessibleDescriptionRole, text("Settings Not Installed"));
    row->setText(row->text() + "  (" + text("Settings Not Installed") + ")");
    row->setData(TitleRole, row->text());
}

std::string ListPage::keyAt(int row) const {
    return utf8(m_list->item(row)->data(KeyRole).toString());
}

void ListPage::itemEdited(QListWidgetItem* row) {
    const std::string key = utf8(row->data(KeyRole).toString());
    const bool enabled = row->checkState() == Qt::Checked;
    if (enabled != row->data(EnabledRole).toBool())
        m_store.setEnabled(m_spec.menuKey, key, enabled);
    else if (row->text() != row->data(TitleRole).toString())
        m_store.rename(m_spec.menuKey, key, utf8(row->text().trimmed()));
    else
        return;
    QTimer::singleShot(0, this, [this] { saved(); });
}

void ListPage::moveBy(int offset) {
    const int row = m_list->currentRow();
    const int target = row + offset;
    if (row < 0 || target < 0 || target >= m_list->count()) return;
    m_store.move(m_spec.menuKey, static_cast<std::size_t>(row),
                 static_cast<std::size_t>(offset > 0 ? target + 1 : target));
    m_list->setCurrentRow(target);
    saved();
}

void ListPage::dropped(int from, int to) {
    m_store.move(m_spec.menuKey, static_cast<std::size_t>(from), static_cast<std::size_t>(to));
    const int landed = from < to ? to - 1 : to;
    QTimer::singleShot(0, this, [this, landed] {
        m_list->setCurrentRow(landed);
        saved();
    });
}

void ListPage::removeCurrent() {
    QListWidgetItem* row = m_list->currentItem();
    if (!row || !row->data(RemovableRole).toBool()) return;
    m_store.remove(m_spec.menuKey, utf8(row->data(KeyRole).toString()));
    saved();
}

void ListPage::add() {
    if (auto failure = addEntry(m_spec.adding, m_store.manager(), m_prompts, this))
        m_prompts.inform(this, *failure);
    saved();
    m_list->setCurrentRow(m_list->count() - 1); // an added entry comes last
}

void ListPage::restore() {
    if (!m_prompts.confirm(this, text("Settings Restore Factory Question"))) return;
    m_store.restoreFactory(m_spec.menuKey);
    saved();
}

void ListPage::updateButtons() {
    const int row = m_list->currentRow();
    m_up->setEnabled(row > 0);
    m_down->setEnabled(row >= 0 && row + 1 < m_list->count());
    m_remove->setEnabled(row >= 0 && m_list->item(row)->data(RemovableRole).toBool());
}

void ListPage::saved() {
    reload();
    if (changed) changed();
}

} // namespace px::settings
