#pragma once

#include "platform/linux/DesktopApplications.h"

#include <QDialog>
#include <optional>
#include <vector>

class QLineEdit;
class QListWidget;

namespace px::settings {

// Picks one of the installed desktop applications, searchable by name, description or id.
class ApplicationChooser final : public QDialog {
  public:
    explicit ApplicationChooser(
        QWidget* parent = nullptr,
        std::vector<platform::DesktopApplication> applications = platform::desktopApplications());

    std::optional<platform::DesktopApplication> chosenApplication() const;
    QLineEdit* searchField() const { return m_search; }
    QListWidget* applicationList() const { return m_list; }

  private:
    void filter(const QString& words);

    std::vector<platform::DesktopApplication> m_applications;
    QLineEdit* m_search;
    QListWidget* m_list;
};

} // namespace px::settings
