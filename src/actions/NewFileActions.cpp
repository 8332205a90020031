// "New File": a file from a template in the folder being shown, from a save panel, and the
// entry that turns a selected file into a new template.
#include "actions/Alerts.h"
#include "actions/Commands.h"
#include "actions/FileIcon.h"
#include "actions/NewFile.h"
#include "actions/PXSelectFileTypeViewCtl.h"
#include "actions/ProgressModel.h"
#include "config/MenuKeys.h"
#include "config/PXMenuManager.h"
#include "support/FileHash.h"
#include "support/FileIO.h"
#include "support/Localization.h"
#include "support/PXFile.h"

#include <iostream>
#include <memory>

namespace px::commands {

namespace {

using creation::Existing;

void newPlainFile(ActionContext& cx, const std::string& folder, const PXMenuItem& item) {
    const std::string ext = newfile::effectiveExtension(item);
    newfile::replaceFileAlert(cx.ui(), newfile::plainFilePath(folder, item),
                              [&](const std::string& path, Existing existing) {
                                  newfile::makeFile(cx.request, path, ext, &item, existing);
                              });
}

// The panel confirmed any overwrite of the file it answered. A name that gets the chosen
// extension appended is a different path, and a panel never offers to replace a folder: the
// collision prompt guards those.
void makeFromPanel(ActionContext& cx, const std::string& answered, const std::string& ext,
                   const PXMenuItem* item) {
    const std::string path = newfile::pathWithExtension(answered, ext);
    if (path == answered && !filehash::isFolder(path)) {
        newfile::makeFile(cx.request, path, ext, item, Existing::Replace);
        return;
    }
    newfile::replaceFileAlert(cx.ui(), path, [&](const std::string& finalPath, Existing existing) {
        newfile::makeFile(cx.request, finalPath, ext, item, existing);
    });
}

void newFileFromWindow(ActionContext& cx, const std::string& folder) {
    PXSelectFileTypeViewCtl chooser(cx.store());
    auto chosenExtension = std::make_shared<std::string>();
    chooser.selectHandler = [chosenExtension](const PXMenuItem::Ptr& item) {
        *chosenExtension = item ? newfile::effectiveExtension(*item) : std::string();
    };
    platform::Ui::SaveRequest request;
    request.directory = folder;
    request.name = localized("Untitled");
    chooser.attachTo(request);
    auto answer = cx.ui().runSavePanel(request);
    if (!answer || answer->path.empty()) return;
    makeFromPanel(cx, answer->path, *chosenExtension, chooser.currentItem.get());
}

// The template entry for a copied file, with "iconPath" only when an icon was saved.
plist::Value templateEntry(const std::string& key, const PXFile& source,
                           const std::string& iconPath, const std::string& templatePath) {
    plist::Dictionary entry{{"key", plist::Value(key)},
                            {"ext", plist::Value(source.ext())},
                            {"displayName", plist::Value(source.name())},
                            {"templatePath", plist::Value(templatePath)}};
    if (!iconPath.empty()) entry.emplace("iconPath", plist::Value(iconPath));
    return plist::Value::makeDictionary(std::move(entry));
}

void failed(ActionContext& cx, const Error& error) {
    std::cerr << "pxmenu: " << error.message << '\n';
    alert::alertWithMsg(cx.ui(), localized("Error Common Tip"));
}

// Copies the item into the template folder as <key>; false (after the alert) on failure.
bool copyIntoTemplates(ActionContext& cx, const PXFile& source, const std::string& templates,
                       const std::string& key) {
    auto made = io::makeDirectories(templates);
    if (made) made = creation::copyItem(source.path, templates + "/" + key, Existing::Keep);
    if (made) return true;
    failed(cx, made.error());
    return false;
}

// The icon beside the template as <key>.png; empty when no icon could be drawn.
std::string saveTemplateIcon(const PXFile& source, const std::string& templates,
                             const std::string& key) {
    std::string iconPath = templates + "/" + key + ".png";
    if (fileicon::saveIconPNG(source.path, iconPath, newfile::kTemplateIconSize)) return iconPath;
    std::cerr << "pxmenu: no icon could be drawn for " << source.path
              << "; the template has none\n";
    return {};
}

// The first selected item becomes a new entry of the template list.
void addToFileTemplate(ActionContext& cx) {
    if (cx.selection().empty()) return;
    const PXFile source(cx.selection().front());
    const std::string key = newfile::uuid();
    const std::string templates = cx.store().fileTemplateFolder();
    if (!copyIntoTemplates(cx, source, templates, key)) return;
    const std::string iconPath = saveTemplateIcon(source, templates, key);
    cx.store().addMenuKey(menukey::kNewFile,
                          templateEntry(key, source, iconPath, templates + "/" + key), false);
    cx.progress().showSuccess(localized("Success Common Tip"), [&cx] { cx.clean(); });
}

} // namespace

void createFile(ActionContext& cx, const PXMenuItem& item) {
    if (item.isAddToFileTemplate()) return addToFileTemplate(cx);
    const std::string folder = newfile::targetFolder(cx.selection());
    if (item.isNewFileFromWindow()) return newFileFromWindow(cx, folder);
    newPlainFile(cx, folder, item);
}

} // namespace px::commands
