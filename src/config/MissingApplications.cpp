#include "config/MissingApplications.h"

#include "config/MenuKeys.h"
#include "config/PXDefaultData.h"
#include "config/PXMenuManager.h"
#include "plist/ItemFields.h"

#include <algorithm>
#include <set>

namespace px::entries {

std::vector<std::string> missingFactoryApplications(const PXMenuManager& store,
                                                    const InstalledTest& isInstalled) {
    std::set<std::string> factory;
    for (const auto& entry : PXDefaultData::defaultCommonAppMenu().array())
        factory.insert(fields::string(entry, "key"));
    std::vector<std::string> missing;
    plist::Value stored = store.sharedDefaults().arrayForKey(menukey::kCommonApp);
    if (!stored) return missing;
    for (const auto& entry : stored.array()) {
        const std::string key = fields::string(entry, "key");
        if (factory.count(key) && !fields::flag(entry, "disabled") && !isInstalled(key))
            missing.push_back(key);
    }
    return missing;
}

void switchOff(const PXMenuManager& store, const std::string& menuKey,
               const std::vector<std::string>& keys) {
    for (const auto& key : keys)
        store.updateMenuKey(menuKey, key, "disabled", plist::Value(true));
}

} // namespace px::entries
