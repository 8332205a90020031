// Handing the selection to an application or to a terminal service.
#include "actions/Alerts.h"
#include "actions/Commands.h"
#include "actions/PXTools.h"
#include "platform/Platform.h"
#include "support/FileHash.h"
#include "support/Localization.h"
#include "support/Xdg.h"

namespace px::commands {

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

void openErrorAlert(ActionContext& cx) {
    alert::alertWithMsg(cx.ui(), localized("Open Error Tip"));
}

} // namespace

void openWithApp(ActionContext& cx, const PXMenuItem& item,
                 const std::optional<std::string>& path) {
    if (!filehash::isValid(item.appName)) return;
    const std::string appName = item.appName;
    auto open = [&](const std::optional<std::string>& target) {
        return cx.request.applications().openWithApplication(
            appName, itemsFor(target, cx.request.onItems(), appName));
    };
    const bool pathGiven = path && filehash::isValid(*path);
    if (pathGiven && open(path)) return;
    const std::vector<std::string> selection = cx.selection();
    if (!pathGiven && !selection.empty()) {
        // One launch per item in order; after a failure the application alone is tried, and
        // when that fails too the remaining items are left alone.
        for (const auto& selected : selection)
            if (!open(selected) && !open(std::nullopt)) return openErrorAlert(cx);
        return;
    }
    if (!open(std::nullopt)) openErrorAlert(cx);
}

void openService(ActionContext& cx, const std::string& serve,
                 const std::optional<std::string>& path) {
    std::vector<std::string> urls = cx.selection();
    if (path && filehash::isValid(*path)) urls = {*path};
    if (urls.empty()) urls = {xdg::userDirectory("DESKTOP")};
    PXTools::runService(cx.request.systemServices(), serve, urls);
}

} // namespace px::commands
