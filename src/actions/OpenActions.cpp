// Handing the selection to an application or to a terminal service.
#include "actions/Alerts.h"
#include "actions/FileHash.h"
#include "actions/PXTools.h"
#include "config/Localization.h"
#include "extension/FinderSync.h"
#include "platform/Platform.h"
#include "support/Xdg.h"

namespace px {

namespace {

// The items the application gets for one attempt: none for a blank path, and none for a
// protected folder when the menu was opened on a folder's background rather than on items
// (unless the application is "Warp", which opens at a folder).
std::vector<std::string> itemsFor(const std::optional<std::string>& path, bool openedOnItems,
                                  const std::string& appName) {
    if (!path || !filehash::isValid(*path)) return {};
    if (!openedOnItems && filehash::isSystemFolder(*path) && appName != "Warp") return {};
    return {*path};
}

void openErrorAlert() {
    alert::alertWithMsg(localized("Open Error Tip"));
}

} // namespace

void FinderSync::openWithApp(const PXMenuItem::Ptr& item, const std::optional<std::string>& path) {
    if (!item || !filehash::isValid(item->appName)) return;
    const std::string appName = item->appName;
    auto open = [&](const std::optional<std::string>& target) {
        return platform::applications().openWithApplication(appName,
                                                            itemsFor(target, isSelectURL, appName));
    };
    const bool pathGiven = path && filehash::isValid(*path);
    if (pathGiven && open(path)) return;
    const std::vector<std::string> selection = selectURLs();
    if (!pathGiven && !selection.empty()) {
        // One launch per item in order; after a failure the application alone is tried, and
        // when that fails too the remaining items are left alone.
        for (const auto& selected : selection)
            if (!open(selected) && !open(std::nullopt)) return openErrorAlert();
        return;
    }
    if (!open(std::nullopt)) openErrorAlert();
}

void FinderSync::openServe(const std::string& serve, const std::optional<std::string>& path) {
    std::vector<std::string> urls = selectURLs();
    if (path && filehash::isValid(*path)) urls = {*path};
    if (urls.empty()) urls = {xdg::userDirectory("DESKTOP")};
    PXTools::runService(serve, urls);
}

} // namespace px
