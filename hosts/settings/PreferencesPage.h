#pragma once

#include <QWidget>
#include <functional>
#include <vector>

class QCheckBox;
class QComboBox;

namespace px::settings {

class ConfigStore;

// The preferences a person sets: the switches, what a favourite folder's submenu holds, and
// the two terminals. Each change is saved at once.
class PreferencesPage final : public QWidget {
  public:
    explicit PreferencesPage(ConfigStore& store, QWidget* parent = nullptr);

    // Shows the preferences as they are stored now.
    void reload();

    // The switch for a flag preference ("pref check0", "open new file"), for tests.
    QCheckBox* flagBox(const char* key) const;
    QComboBox* nextMenuChoice() const { return m_nextMenu; }
    QComboBox* terminalChoice(const char* key) const;

    std::function<void()> changed;

  private:
    QComboBox* makeTerminalChoice(const char* key);
    void saveTerminal(QComboBox* choice);

    ConfigStore& m_store;
    std::vector<QCheckBox*> m_flags;
    QComboBox* m_nextMenu;
    std::vector<QComboBox*> m_terminals;
    bool m_filling = false;
};

} // namespace px::settings
