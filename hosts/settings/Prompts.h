#pragma once

#include "platform/linux/DesktopApplications.h"

#include <QString>
#include <optional>
#include <string>

class QWidget;

namespace px::settings {

// The questions the window asks a person: file and folder choosers, the application chooser,
// confirmations and messages. Tests answer them from a script.
class Prompts {
  public:
    virtual ~Prompts() = default;
    virtual std::optional<std::string> chooseFolder(QWidget* parent, const QString& title) = 0;
    virtual std::optional<std::string> chooseFile(QWidget* parent, const QString& title,
                                                  const QString& filter) = 0;
    virtual std::optional<std::string> chooseSaveFile(QWidget* parent, const QString& title,
                                                      const QString& name) = 0;
    virtual std::optional<platform::DesktopApplication> chooseApplication(QWidget* parent) = 0;
    virtual bool confirm(QWidget* parent, const QString& message) = 0;
    virtual void inform(QWidget* parent, const QString& message) = 0;
};

// The real dialogs.
class DialogPrompts final : public Prompts {
  public:
    std::optional<std::string> chooseFolder(QWidget* parent, const QString& title) override;
    std::optional<std::string> chooseFile(QWidget* parent, const QString& title,
                                          const QString& filter) override;
    std::optional<std::string> chooseSaveFile(QWidget* parent, const QString& title,
                                              const QString& name) override;
    std::optional<platform::DesktopApplication> chooseApplication(QWidget* parent) override;
    bool confirm(QWidget* parent, const QString& message) override;
    void inform(QWidget* parent, const QString& message) override;
};

} // namespace px::settings
