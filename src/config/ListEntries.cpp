#include "config/ListEntries.h"

#include "config/MenuKeys.h"
#include "config/PXDefaultData.h"
#include "config/PXMenuManager.h"
#include "plist/ItemFields.h"
#include "support/StandardPath.h"

#include <algorithm>

namespace px::entries {

namespace {

bool listHas(const PXMenuManager& store, const std::string& menuKey, const std::string& key,
             bool comparePaths) {
    plist::Value list = store.sharedDefaults().arrayForKey(menuKey);
    if (!list) return false;
    return std::any_of(list.array().begin(), list.array().end(), [&](const plist::Value& entry) {
        std::string stored = keyOf(entry);
        return (comparePaths ? standardizePath(stored) : stored) == key;
    });
}

} // namespace

std::string keyOf(const plist::Value& entry) {
    std::string key = fields::string(entry, "key");
    return key.empty() ? fields::string(entry, "path") : key;
}

PXMenuItem displayItem(std::string_view menuKey, const plist::Value& entry) {
    PXMenuItem item;
    item.key = fields::string(entry, "key");
    item.icon = fields::string(entry, "icon");
    item.iconPath = fields::string(entry, "iconPath");
    item.displayName = fields::string(entry, "displayName");
    item.ext = fields::string(entry, "ext");
    item.disabled = fields::flag(entry, "disabled");
    if (menuKey == menukey::kCommonPath) {
        item.path = standardizePath(fields::string(entry, "path"));
        item.icon = "folder";
        item.key = item.path;
    }
    return item;
}

bool canRemove(std::string_view menuKey, const plist::Value& entry) {
    const std::string key = fields::string(entry, "key");
    if (menuKey == menukey::kNewFile) return key != "New File From Window";
    if (menuKey != menukey::kRightMenu) return true;
    const auto& forever = PXDefaultData::foreverKeyArray();
    return std::find(forever.begin(), forever.end(), key) == forever.end();
}

bool addApplication(const PXMenuManager& store, const std::string& name, const std::string& icon) {
    if (name.empty() || listHas(store, menukey::kCommonApp, name, false)) return false;
    plist::Dictionary entry{{"key", plist::Value(name)}};
    if (!icon.empty()) entry.emplace(icon.front() == '/' ? "iconPath" : "icon", plist::Value(icon));
    store.addMenuKey(menukey::kCommonApp, plist::Value::makeDictionary(std::move(entry)), false);
    return true;
}

bool addFolder(const PXMenuManager& store, const std::string& path) {
    const std::string standard = standardizePath(path);
    if (path.empty() || listHas(store, menukey::kCommonPath, standard, true)) return false;
    store.addMenuKey(menukey::kCommonPath,
                     plist::Value::makeDictionary({{"path", plist::Value(standard)}}), false);
    return true;
}

} // namespace px::entries
