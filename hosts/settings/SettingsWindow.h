#pragma once

#include "ListPage.h"

#include <QWidget>
#include <vector>

class QListWidget;
class QPushButton;
class QStackedWidget;

namespace px::settings {

class ConfigStore;
class PreferencesPage;
class PreviewPanel;
class Prompts;

// The settings window: a page per list and one of preferences, the live preview beside them,
// import and export of the whole configuration. Changes saved elsewhere show when the window
// is activated again.
class SettingsWindow final : public QWidget {
  public:
    SettingsWindow(ConfigStore& store, Prompts& prompts, QWidget* parent = nullptr);

    // Shows every page and the preview as they are stored now.
    void reloadAll();

    int pageCount() const;
    void showPage(int index);
    int indexOf(QWidget* page) const;
    QWidget* page(int index) const;
    ListPage* listPage(const char* menuKey) const;
    PreferencesPage* preferencesPage() const { return m_preferences; }
    PreviewPanel* preview() const { return m_preview; }
    QListWidget* pageList() const { return m_pageList; }
    QPushButton* importButton() const { return m_import; }
    QPushButton* exportButton() const { return m_export; }

  protected:
    void changeEvent(QEvent* event) override;

  private:
    void addPage(QWidget* page, const char* titleKey, const QIcon& icon);
    void importConfiguration();
    void exportConfiguration();
    void edited();

    ConfigStore& m_store;
    Prompts& m_prompts;
    QListWidget* m_pageList;
    QStackedWidget* m_pages;
    std::vector<ListPage*> m_lists;
    PreferencesPage* m_preferences;
    PreviewPanel* m_preview;
    QPushButton* m_import;
    QPushButton* m_export;
};

} // namespace px::settings
