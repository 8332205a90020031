#pragma once

#include "platform/Ui.h"

#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>

namespace px::gui {

// A small dialog of labelled rows with OK (default, Return) and Cancel (Escape); OK is off
// while the check of the name field fails.
class EntryDialog : public QDialog {
    Q_OBJECT
  public:
    QLineEdit& nameField() { return *m_name; }
    QPushButton& okButton() { return *m_buttons->button(QDialogButtonBox::Ok); }
    QPushButton& cancelButton() { return *m_buttons->button(QDialogButtonBox::Cancel); }

  protected:
    EntryDialog(const QString& title, std::function<bool(const QString&)> check);
    void addRow(const QString& label, QWidget* field);
    void recheck();

  private:
    QLineEdit* m_name;
    QDialogButtonBox* m_buttons;
    std::function<bool(const QString&)> m_check;
};

// The embed dialog: the folder name and the mode pop-up.
class EmbedDialog final : public EntryDialog {
    Q_OBJECT
  public:
    explicit EmbedDialog(const platform::Ui::EmbedRequest& request);
    QComboBox& modeChooser() { return *m_modes; }

  private:
    QComboBox* m_modes;
};

// The name entry: one text field under its tip.
class NameEntryDialog final : public EntryDialog {
    Q_OBJECT
  public:
    explicit NameEntryDialog(const platform::Ui::NameRequest& request);
};

} // namespace px::gui
