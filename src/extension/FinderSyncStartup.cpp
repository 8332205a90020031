// Start-up, the monitored folders and the selection.
#include "actions/FileHash.h"
#include "config/Localization.h"
#include "config/MenuKeys.h"
#include "config/PXMenuManager.h"
#include "extension/FinderSync.h"
#include "platform/Platform.h"
#include "support/Notifications.h"
#include "support/Queues.h"

#include <algorithm>
#include <set>

namespace px {

FinderSync::FinderSync() : FinderSync(Options{}) {}

FinderSync::FinderSync(Options options) : m_options(options) {
    setupDirectoryURLs();
    if (PXMenuManager::sharedDefaults().boolForKey("pref check3"))
        platform::workspace().observeMounts([this] { volumeChangeNoti(); });
    loadingCount = 0;
    if (options.clearCutList)
        PXMenuManager::updateMenuKey(menukey::kRightMenu, "Cut Paste", "cutPaths",
                                     plist::Value::makeArray());
}

FinderSync::~FinderSync() {
    NotificationCenter::defaultCenter().removeObserver(this);
    platform::workspace().observeMounts({});
}

void FinderSync::setupDirectoryURLs() {
    std::vector<std::string> folders;
    if (PXMenuManager::sharedDefaults().boolForKey("pref check3"))
        folders = platform::workspace().mountedVolumes();
    folders.push_back("/");
    std::set<std::string> unique(folders.begin(), folders.end());
    platform::controller().setDirectoryURLs({unique.begin(), unique.end()});
}

void FinderSync::volumeChangeNoti() {
    queue::enterForegroundWithDelay(1, [this] { setupDirectoryURLs(); });
}

std::string FinderSync::targetURL() const {
    return platform::controller().targetedURL();
}

const std::vector<std::string>& FinderSync::selectURLs() {
    if (selectURLsCache) return *selectURLsCache;
    std::vector<std::string> selection = platform::controller().selectedItemURLs();
    std::string target = targetURL();
    if (selection.empty() && filehash::isValid(target)) selection.push_back(target);
    std::erase(selection, "/");
    selectURLsCache = std::move(selection);
    return *selectURLsCache;
}

std::vector<std::string> FinderSync::selectPaths() {
    return selectURLs();
}

bool FinderSync::isSelectSingleURL() {
    return isSelectURL && selectURLs().size() == 1;
}

std::string FinderSync::toolbarItemName() const {
    return localized("CFBundleDisplayName");
}
std::string FinderSync::toolbarItemToolTip() const {
    return localized("CFBundleDisplayName");
}
std::string FinderSync::toolbarItemImage() const {
    return "pro";
}

} // namespace px
