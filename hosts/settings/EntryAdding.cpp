#include "EntryAdding.h"

#include "Prompts.h"
#include "Texts.h"
#include "actions/FolderIconAdding.h"
#include "actions/IconThemeFiles.h"
#include "actions/TemplateAdding.h"
#include "config/ListEntries.h"

namespace px::settings {

namespace {

// Big enough for menus and the settings lists on dense screens.
constexpr int kApplicationIconSize = 48;

std::string iconFileOf(const platform::DesktopApplication& application) {
    if (application.icons.empty()) return {};
    if (application.icons.front().front() == '/') return application.icons.front();
    return icontheme::findIconFile(application.icons, kApplicationIconSize).value_or("");
}

std::optional<QString> addApplication(const PXMenuManager& store, Prompts& prompts,
                                      QWidget* parent) {
    auto application = prompts.chooseApplication(parent);
    if (!application) return std::nullopt;
    if (!entries::addApplication(store, application->name, iconFileOf(*application)))
        return text("Settings Already Listed Tip", {qt(application->name)});
    return std::nullopt;
}

std::optional<QString> addFolder(const PXMenuManager& store, Prompts& prompts, QWidget* parent) {
    auto folder = prompts.chooseFolder(parent, text("Settings Add Folder"));
    if (!folder) return std::nullopt;
    if (!entries::addFolder(store, *folder))
        return text("Settings Already Listed Tip", {qt(*folder)});
    return std::nullopt;
}

template <typename Adder>
std::optional<QString> addFile(Prompts& prompts, QWidget* parent, const char* titleKey,
                               const QString& filter, const char* failureKey, Adder adder) {
    auto file = prompts.chooseFile(parent, text(titleKey), filter);
    if (!file) return std::nullopt;
    if (auto added = adder(*file); added.isError())
        return text(failureKey, {qt(added.error().message)});
    return std::nullopt;
}

} // namespace

std::optional<QString> addEntry(Adding adding, PXMenuManager& store, Prompts& prompts,
                                QWidget* parent) {
    switch (adding) {
    case Adding::Application:
        return addApplication(store, prompts, parent);
    case Adding::Folder:
        return addFolder(store, prompts, parent);
    case Adding::Template:
        return addFile(
            prompts, parent, "Settings Add Template", {}, "Settings Add Failed Tip",
            [&store](const std::string& path) { return newfile::addFileTemplate(store, path); });
    case Adding::FolderIcon:
        return addFile(prompts, parent, "Settings Add Folder Icon",
                       text("Settings Image Files") + " (*.png *.jpg *.jpeg *.svg *.gif *.bmp "
                                                      "*.tif *.tiff *.webp *.ico)",
                       "Settings Add Failed Tip", [&store](const std::string& path) {
                           return foldericon::addFolderIcon(store, path);
                       });
    case Adding::None:
        break;
    }
    return std::nullopt;
}

} // namespace px::settings
