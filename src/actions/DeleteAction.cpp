// Removing the selected items for good, after a confirmation when the user asked for one.
#include "actions/Alerts.h"
#include "actions/FileHash.h"
#include "config/Localization.h"
#include "config/PXMenuManager.h"
#include "extension/FinderSync.h"
#include "platform/Platform.h"

namespace px {

namespace {

// True unless the user asked to confirm deletions and then did not choose "OK".
bool confirmDelete() {
    if (!PXMenuManager::sharedDefaults().boolForKey("pref check0")) return true;
    platform::Ui::Alert warning{
        localized("Warn"), localized("Delete Tip"), {localized("OK"), localized("Cancel")}};
    return platform::ui().runAlert(warning) == 1000;
}

} // namespace

void FinderSync::deletePath() {
    if (!confirmDelete()) return;
    const std::vector<std::string> paths = selectURLs();
    for (const auto& path : paths)
        if (!filehash::remove(path)) alert::alertWithMsg(localized("Delete Fail Tip"));
}

} // namespace px
