#pragma once

#include <QWidget>
#include <functional>
#include <string>

class QListWidget;
class QListWidgetItem;
class QPushButton;

namespace px::settings {

class ConfigStore;
class Prompts;

// How entries are added to a list.
enum class Adding { None, Application, Folder, Template, FolderIcon };

struct ListSpec {
    const char* menuKey;  // the stored list
    const char* titleKey; // the page's title in the catalogues
    Adding adding;
};

// One stored list: each entry with its icon and title, a check box for enabled, the title
// edited in place (F2), reordering by drag and drop, Move Up/Down (Alt+Up, Alt+Down) and
// removal (Delete) where the list allows it, adding, and restoring the factory list.
class ListPage final : public QWidget {
  public:
    ListPage(ConfigStore& store, Prompts& prompts, ListSpec spec, QWidget* parent = nullptr);

    // Shows the list as it is stored now, keeping the selected row.
    void reload();
    // Reloads now when the page is shown, else when it is next shown.
    void reloadWhenShown();
    const ListSpec& spec() const { return m_spec; }

    QListWidget* list() const { return m_list; }
    QPushButton* moveUpButton() const { return m_up; }
    QPushButton* moveDownButton() const { return m_down; }
    QPushButton* addButton() const { return m_add; }
    QPushButton* removeButton() const { return m_remove; }
    QPushButton* restoreButton() const { return m_restore; }

    // Called after every change this page saved.
    std::function<void()> changed;

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    QPushButton* makeButton(const char* key);
    void markIfNotInstalled(QListWidgetItem* row);
    void itemEdited(QListWidgetItem* row);
    void moveBy(int offset);
    void dropped(int from, int to);
    void removeCurrent();
    void add();
    void restore();
    void updateButtons();
    void saved();
    std::string keyAt(int row) const;

    ConfigStore& m_store;
    Prompts& m_prompts;
    ListSpec m_spec;
    QListWidget* m_list;
    QPushButton* m_up;
    QPushButton* m_down;
    QPushButton* m_add = nullptr;
    QPushButton* m_remove;
    QPushButton* m_restore;
    bool m_filling = false;
    bool m_stale = true;
};

} // namespace px::settings
