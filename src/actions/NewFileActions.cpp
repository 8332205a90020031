// "New File": a file from a template in the folder being shown, from a save panel, and the
// entry that turns a selected file into a new template.
#include "actions/Alerts.h"
#include "actions/FileHash.h"
#include "actions/NewFile.h"
#include "actions/PXSelectFileTypeViewCtl.h"
#include "actions/TemplateAdding.h"
#include "archive/PXLoadingWinCtl.h"
#include "config/Localization.h"
#include "extension/FinderSync.h"
#include "platform/Platform.h"

#include <iostream>
#include <memory>

namespace px {

namespace {

using creation::Existing;

void newPlainFile(const std::string& folder, const PXMenuItem::Ptr& item) {
    const std::string ext = newfile::effectiveExtension(*item);
    newfile::_replaceFileAlert(newfile::plainFilePath(folder, *item),
                               [&](const std::string& path, Existing existing) {
                                   newfile::makeFile(path, ext, item, existing);
                               });
}

// The panel confirmed any overwrite of the file it answered. A name that gets the chosen
// extension appended is a different path, and a panel never offers to replace a folder: the
// collision prompt guards those.
void makeFromPanel(const std::string& answered, const std::string& ext,
                   const PXMenuItem::Ptr& item) {
    const std::string path = newfile::pathWithExtension(answered, ext);
    if (path == answered && !filehash::isFolder(path)) {
        newfile::makeFile(path, ext, item, Existing::Replace);
        return;
    }
    newfile::_replaceFileAlert(path, [&](const std::string& finalPath, Existing existing) {
        newfile::makeFile(finalPath, ext, item, existing);
    });
}

void newFileFromWindow(const std::string& folder) {
    PXSelectFileTypeViewCtl chooser;
    auto chosenExtension = std::make_shared<std::string>();
    chooser.selectHandler = [chosenExtension](const PXMenuItem::Ptr& item) {
        *chosenExtension = item ? newfile::effectiveExtension(*item) : std::string();
    };
    platform::Ui::SaveRequest request;
    request.directory = folder;
    request.name = localized("Untitled");
    chooser.attachTo(request);
    auto answer = platform::ui().runSavePanel(request);
    if (!answer || answer->path.empty()) return;
    makeFromPanel(answer->path, *chosenExtension, chooser.currentItem);
}

// The first selected item becomes a new entry of the template list.
void addToFileTemplate(FinderSync& sync) {
    if (sync.selectURLs().empty()) return;
    if (auto added = newfile::addFileTemplate(sync.selectURLs().front()); added.isError()) {
        std::cerr << "pxmenu: " << added.error().message << '\n';
        alert::alertWithMsg(localized("Error Common Tip"));
        return;
    }
    sync.loadingWinCtl().showSuccess(localized("Success Common Tip"), [&sync] { sync.clean(); });
}

} // namespace

void FinderSync::createFileWithItem(const PXMenuItem::Ptr& item) {
    if (!item) return;
    if (item->isAddToFileTemplate()) return addToFileTemplate(*this);
    const std::string folder = newfile::targetFolder(selectURLs());
    if (item->isNewFileFromWindow()) return newFileFromWindow(folder);
    newPlainFile(folder, item);
}

} // namespace px
