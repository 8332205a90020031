// "Embed in Folder" and "Unembed Folder": the extension's side, with the dialog and the alerts.
#include "actions/Alerts.h"
#include "actions/Commands.h"
#include "actions/EmbedFolder.h"
#include "actions/EmbedFolderPrompt.h"
#include "actions/FailureLog.h"
#include "support/FileHash.h"
#include "support/Localization.h"
#include "support/PXFile.h"

namespace px::commands {

namespace {

// A folder that cannot be made is only logged; each item that did not move gets an alert.
void report(ActionContext& cx, const embed::EmbedOutcome& outcome) {
    if (outcome.folderError) logFailure(*outcome.folderError);
    for (const Error& failure : outcome.failures) {
        logFailure(failure);
        alert::alertWithMsg(cx.ui(), localized("Error Common Tip"));
    }
}

void runEmbed(ActionContext& cx, const std::vector<std::string>& paths, const std::string& name,
              int mode) {
    report(cx, embed::embedItems(paths, name, mode == EmbedFolderPrompt::ByExtension));
}

} // namespace

void embedFolder(ActionContext& cx) {
    const std::vector<std::string> paths = cx.selection();
    if (paths.empty()) return;
    if (!cx.embedPrompt && paths.size() == 1)
        return runEmbed(cx, paths, PXFile(paths.front()).name(), EmbedFolderPrompt::NotClassified);
    if (!cx.embedPrompt) cx.embedPrompt = std::make_shared<EmbedFolderPrompt>(cx.ui());
    // Held here while the dialog runs: its handler lets go of the property.
    std::shared_ptr<EmbedFolderPrompt> dialog = cx.embedPrompt;
    dialog->handler = [&cx, paths](const std::string& name, int mode) {
        runEmbed(cx, paths, name, mode);
        cx.embedPrompt.reset();
        if (cx.loadingCount == 0 && !cx.compress) cx.clean(); // a running job keeps its window
    };
    dialog->open();
}

void unembedFolder(ActionContext& cx) {
    const std::vector<std::string> paths = cx.selection();
    for (const std::string& folder : paths) {
        if (!filehash::isFolder(folder)) continue;
        const embed::UnembedOutcome outcome = embed::unembedFolder(folder);
        if (outcome.error) logFailure(*outcome.error);
        if (outcome.result == embed::UnembedResult::Failed)
            return alert::alertWithMsg(cx.ui(), localized("Error Common Tip"));
        if (outcome.result == embed::UnembedResult::Empty)
            alert::alertWithMsg(cx.ui(), localized("Empty Folder Tip"));
    }
}

} // namespace px::commands
