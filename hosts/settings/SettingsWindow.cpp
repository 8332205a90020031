#include "SettingsWindow.h"

#include "ConfigStore.h"
#include "PreferencesPage.h"
#include "PreviewPanel.h"
#include "Prompts.h"
#include "Texts.h"
#include "config/ConfigExchange.h"
#include "config/MenuKeys.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QSplitter>
#include <QStackedWidget>
#include <QTimer>
#include <QVBoxLayout>
#include <array>

namespace px::settings {

namespace {

struct PageSpec {
    ListSpec list;
    const char* icon;
};

constexpr std::array<PageSpec, 5> kListPages{{
    {{menukey::kRightMenu, "Settings Page Right Menu", Adding::None}, "system-file-manager"},
    {{menukey::kNewFile, "Settings Page New File", Adding::Template}, "document-new"},
    {{menukey::kCommonApp, "Settings Page Common App", Adding::Application}, "applications-other"},
    {{menukey::kCommonPath, "Settings Page Common Path", Adding::Folder}, "folder"},
    {{menukey::kFolderIcon, "Settings Page Folder Icon", Adding::FolderIcon}, "folder-pictures"},
}};

QPushButton* button(const char* key) {
    auto* made = new QPushButton(text(key));
    made->setAccessibleName(QString(text(key)).remove('&'));
    made->setToolTip(text(std::string(key) + " Tip"));
    return made;
}

} // namespace

SettingsWindow::SettingsWindow(ConfigStore& store, Prompts& prompts, QWidget* parent)
    : QWidget(parent), m_store(store), m_prompts(prompts), m_pageList(new QListWidget),
      m_pages(new QStackedWidget), m_preferences(new PreferencesPage(store)),
      m_preview(new PreviewPanel(store)), m_import(button("Settings Import")),
      m_export(button("Settings Export")) {
    setWindowTitle(text("Settings Window Title"));
    setWindowIcon(QIcon::fromTheme("preferences-system"));
    m_pageList->setAccessibleName(text("Settings Pages"));
    m_pageList->setIconSize({22, 22});
    m_pageList->setMaximumWidth(230);
    for (const auto& spec : kListPages) {
        auto* page = new ListPage(store, prompts, spec.list);
        page->changed = [this] { edited(); };
        m_lists.push_back(page);
        addPage(page, spec.list.titleKey, QIcon::fromTheme(spec.icon));
    }
    m_preferences->changed = [this] { edited(); };
    addPage(m_preferences, "Settings Page Preferences", QIcon::fromTheme("preferences-system"));

    auto* splitter = new QSplitter;
    splitter->addWidget(m_pageList);
    splitter->addWidget(m_pages);
    splitter->addWidget(m_preview);
    splitter->setStretchFactor(1, 3);
    splitter->setStretchFactor(2, 2);
    splitter->setChildrenCollapsible(false);
    splitter->setSizes({200, 500, 320});
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_import);
    bottom->addWidget(m_export);
    bottom->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(splitter);
    layout->addLayout(bottom);

    connect(m_pageList, &QListWidget::currentRowChanged, m_pages, &QStackedWidget::setCurrentIndex);
    connect(m_import, &QPushButton::clicked, this, [this] { importConfiguration(); });
    connect(m_export, &QPushButton::clicked, this, [this] { exportConfiguration(); });
    m_pageList->setCurrentRow(0);
    // The preview runs the menu builder; it is drawn right after the window's first paint.
    QTimer::singleShot(0, m_preview, [this] { m_preview->refresh(); });
    resize(1060, 640);
}

void SettingsWindow::addPage(QWidget* page, const char* titleKey, const QIcon& icon) {
    new QListWidgetItem(icon, text(titleKey), m_pageList);
    m_pages->addWidget(page);
}

int SettingsWindow::pageCount() const {
    return m_pages->count();
}

void SettingsWindow::showPage(int index) {
    m_pageList->setCurrentRow(index);
}

int SettingsWindow::indexOf(QWidget* page) const {
    return m_pages->indexOf(page);
}

QWidget* SettingsWindow::page(int index) const {
    return m_pages->widget(index);
}

ListPage* SettingsWindow::listPage(const char* menuKey) const {
    for (auto* page : m_lists)
        if (std::string(page->spec().menuKey) == menuKey) return page;
    return nullptr;
}

void SettingsWindow::reloadAll() {
    for (auto* page : m_lists)
        page->reloadWhenShown();
    m_preferences->reload();
    m_preview->refresh();
}

void SettingsWindow::edited() {
    m_preview->refresh();
}

void SettingsWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow()) reloadAll();
}

void SettingsWindow::importConfiguration() {
    auto path = m_prompts.chooseFile(this, text("Settings Import"),
                                     text("Settings Configuration Files") + " (*.plist)");
    if (!path) return;
    if (auto imported = exchange::importConfiguration(m_store.suite(), *path); imported.isError()) {
        m_prompts.inform(this, text("Settings Import Failed Tip", {qt(imported.error().message)}));
        return;
    }
    reloadAll();
}

void SettingsWindow::exportConfiguration() {
    auto path =
        m_prompts.chooseSaveFile(this, text("Settings Export"), "pxmenu-configuration.plist");
    if (!path) return;
    if (auto exported = exchange::exportConfiguration(m_store.suite(), *path); exported.isError())
        m_prompts.inform(this, text("Settings Export Failed Tip", {qt(exported.error().message)}));
}

} // namespace px::settings
