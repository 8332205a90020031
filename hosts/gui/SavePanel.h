#pragma once

#include "platform/Ui.h"

#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>

namespace px::gui {

// The save panel: Qt's file dialog with the accessory rows a request asks for (a password
// field; the file-type pop-up, whose choice puts its extension on the typed name), and the
// overwrite question as its own step when the answered path exists.
class SavePanel final : public QFileDialog {
    Q_OBJECT
  public:
    explicit SavePanel(const platform::Ui::SaveRequest& request);

    QLineEdit& nameField();
    QLineEdit* passwordField() { return m_password; }
    QComboBox* typeChooser() { return m_types; }
    QPushButton& confirmButton();
    // The overwrite question is answered yes without being shown (driven mode).
    void confirmOverwriteSilently() { m_silentOverwrite = true; }

    QString chosenPath() const;

  public Q_SLOTS:
    void accept() override;

  private:
    void typeChanged(int index);
    void addRow(const QString& label, QWidget* field);

    const platform::Ui::SaveRequest& m_request;
    QLineEdit* m_password = nullptr;
    QComboBox* m_types = nullptr;
    int m_typeShown = -1;
    bool m_silentOverwrite = false;
};

// Qt's file dialog for choosing a file or a folder, with the request's button title and
// message.
class OpenPanel final : public QFileDialog {
    Q_OBJECT
  public:
    explicit OpenPanel(const platform::Ui::OpenRequest& request);
    QLineEdit& nameField();
    QPushButton& confirmButton();
};

} // namespace px::gui
