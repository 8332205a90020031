// "Embed in Folder" and "Unembed Folder": the extension's side, with the dialog and the alerts.
#include "actions/Alerts.h"
#include "actions/EmbedFolder.h"
#include "actions/FailureLog.h"
#include "actions/FileHash.h"
#include "actions/PXEmbedFolderWinCtl.h"
#include "actions/PXFile.h"
#include "config/Localization.h"
#include "extension/FinderSync.h"

namespace px {

namespace {

// A folder that cannot be made is only logged; each item that did not move gets an alert.
void report(const embed::EmbedOutcome& outcome) {
    if (outcome.folderError) logFailure(*outcome.folderError);
    for (const Error& failure : outcome.failures) {
        logFailure(failure);
        alert::alertWithMsg(localized("Error Common Tip"));
    }
}

void runEmbed(const std::vector<std::string>& paths, const std::string& name, int mode) {
    report(embed::embedItems(paths, name, mode == PXEmbedFolderWinCtl::ByExtension));
}

} // namespace

void FinderSync::embedFolder() {
    const std::vector<std::string> paths = selectURLs();
    if (paths.empty()) return;
    if (!embedFolderWinCtl && paths.size() == 1)
        return runEmbed(paths, PXFile(paths.front()).name(), PXEmbedFolderWinCtl::NotClassified);
    if (!embedFolderWinCtl) embedFolderWinCtl = std::make_shared<PXEmbedFolderWinCtl>();
    // Held here while the dialog runs: its handler lets go of the property.
    std::shared_ptr<PXEmbedFolderWinCtl> dialog = embedFolderWinCtl;
    dialog->handler = [this, paths](const std::string& name, int mode) {
        runEmbed(paths, name, mode);
        embedFolderWinCtl.reset();
        if (loadingCount == 0 && !compress) clean(); // a running job keeps its window
    };
    dialog->open();
}

void FinderSync::unembedFolder() {
    const std::vector<std::string> paths = selectURLs();
    for (const std::string& folder : paths) {
        if (!filehash::isFolder(folder)) continue;
        const embed::UnembedOutcome outcome = embed::unembedFolder(folder);
        if (outcome.error) logFailure(*outcome.error);
        if (outcome.result == embed::UnembedResult::Failed)
            return alert::alertWithMsg(localized("Error Common Tip"));
        if (outcome.result == embed::UnembedResult::Empty)
            alert::alertWithMsg(localized("Empty Folder Tip"));
    }
}

} // namespace px
