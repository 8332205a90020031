#pragma once

#include <QWidget>
#include <string>
#include <vector>

class QComboBox;
class QTreeWidget;

namespace px::settings {

class ConfigStore;

// The menu as the file manager will show it, for a selected file, for several items or for a
// folder's background, drawn by the real menu builder from sample items in a scratch folder.
class PreviewPanel final : public QWidget {
  public:
    explicit PreviewPanel(ConfigStore& store, QWidget* parent = nullptr);

    // Builds the menu again from the stored lists.
    void refresh();

    QComboBox* situationChoice() const { return m_situation; }
    QTreeWidget* tree() const { return m_tree; }

  private:
    void makeSamples();

    ConfigStore& m_store;
    QComboBox* m_situation;
    QTreeWidget* m_tree;
    std::string m_folder;
    std::vector<std::string> m_files;
};

} // namespace px::settings
