#include "ApplicationChooser.h"
#include "Prompts.h"
#include "Texts.h"

#include <QDir>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>

namespace px::settings {

namespace {

std::optional<std::string> chosen(const QString& path) {
    if (path.isEmpty()) return std::nullopt;
    return utf8(path);
}

} // namespace

std::optional<std::string> DialogPrompts::chooseFolder(QWidget* parent, const QString& title) {
    return chosen(QFileDialog::getExistingDirectory(parent, title, QDir::homePath()));
}

std::optional<std::string> DialogPrompts::chooseFile(QWidget* parent, const QString& title,
                                                     const QString& filter) {
    return chosen(QFileDialog::getOpenFileName(parent, title, QDir::homePath(), filter));
}

std::optional<std::string> DialogPrompts::chooseSaveFile(QWidget* parent, const QString& title,
                                                         const QString& name) {
    return chosen(QFileDialog::getSaveFileName(parent, title, QDir::home().filePath(name)));
}

std::optional<platform::DesktopApplication> DialogPrompts::chooseApplication(QWidget* parent) {
    ApplicationChooser chooser(parent);
    if (chooser.exec() != QDialog::Accepted) return std::nullopt;
    return chooser.chosenApplication();
}

bool DialogPrompts::confirm(QWidget* parent, const QString& message) {
    QMessageBox box(QMessageBox::Question, text("Settings Window Title"), message,
                    QMessageBox::Ok | QMessageBox::Cancel, parent);
    box.button(QMessageBox::Ok)->setText(text("OK"));
    box.button(QMessageBox::Cancel)->setText(text("Cancel"));
    box.setDefaultButton(QMessageBox::Cancel);
    return box.exec() == QMessageBox::Ok;
}

void DialogPrompts::inform(QWidget* parent, const QString& message) {
    QMessageBox box(QMessageBox::Information, text("Settings Window Title"), message,
                    QMessageBox::Ok, parent);
    box.button(QMessageBox::Ok)->setText(text("OK"));
    box.exec();
}

} // namespace px::settings
