// Start-up and the monitored folders.
#include "extension/FinderSync.h"

#include "config/MenuKeys.h"
#include "support/Localization.h"
#include "support/Queues.h"

#include <set>

namespace px {

FinderSync::FinderSync(std::shared_ptr<PXMenuManager> store, platform::Platform services,
                       Options options)
    : m_store(std::move(store)), m_services(services.withStandIns()) {
    setupDirectoryURLs();
    if (m_store->sharedDefaults().boolForKey("pref check3"))
        m_services.workspace->observeMounts([this] { volumeChangeNoti(); });
    if (options.clearCutList)
        m_store->updateMenuKey(menukey::kRightMenu, "Cut Paste", "cutPaths",
                               plist::Value::makeArray());
}

FinderSync::~FinderSync() {
    *m_alive = false;
    m_services.workspace->observeMounts({});
}

void FinderSync::setupDirectoryURLs() {
    std::vector<std::string> folders;
    if (m_store->sharedDefaults().boolForKey("pref check3"))
        folders = m_services.workspace->mountedVolumes();
    folders.push_back("/");
    std::set<std::string> unique(folders.begin(), folders.end());
    m_services.controller->setDirectoryURLs({unique.begin(), unique.end()});
}

void FinderSync::volumeChangeNoti() {
    queue::enterForegroundWithDelay(1, [this, alive = m_alive] {
        if (*alive) setupDirectoryURLs();
    });
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
