// Removing the selected items for good, after a confirmation when the user asked for one.
#include "actions/Alerts.h"
#include "actions/Commands.h"
#include "config/PXMenuManager.h"
#include "platform/Platform.h"
#include "support/FileHash.h"
#include "support/Localization.h"

namespace px::commands {

namespace {

// True unless the user asked to confirm deletions and then did not choose "OK".
bool confirmDelete(ActionContext& cx) {
    if (!cx.request.preferences().boolForKey("pref check0")) return true;
    platform::Ui::Alert warning{
        localized("Warn"), localized("Delete Tip"), {localized("OK"), localized("Cancel")}};
    return cx.ui().runAlert(warning) == 1000;
}

} // namespace

void deleteItems(ActionContext& cx) {
    if (!confirmDelete(cx)) return;
    const std::vector<std::string> paths = cx.selection();
    for (const auto& path : paths)
        if (!filehash::remove(path)) alert::alertWithMsg(cx.ui(), localized("Delete Fail Tip"));
}

} // namespace px::commands
