#include "config/PXDefaultData.h"

#include "actions/FileHash.h"
#include "config/ItemFields.h"
#include "config/MenuKeys.h"
#include "config/PXMenuManager.h"
#include "config/StoredLists.h"
#include "support/BuildConfig.h"

namespace px {

namespace {

constexpr const char* kChangedVersion = "is changed version";

platform::Settings& suite() {
    return PXMenuManager::sharedDefaults();
}

plist::Value withoutChangedVersion(const plist::Value& entry) {
    plist::Value copy = entry.mutableCopy();
    copy.mutableDictionary().erase(kChangedVersion);
    return copy.frozen();
}

std::optional<std::size_t> indexOfKey(const plist::Array& list, const plist::Value& key) {
    for (std::size_t i = 0; i < list.size(); ++i)
        if (list[i].isDictionary() && list[i].get("key") == key) return i;
    return std::nullopt;
}

// One upgrade step for one factory entry at index `position` of the factory list.
void upgradeEntry(plist::Array& stored, const plist::Value& factory, std::size_t position) {
    std::string changed = fields::string(factory, kChangedVersion);
    if (!filehash::isValid(changed)) return;
    // With no stamp stored every comparison reads as "same": only removals apply.
    auto stamp = suite().stringForKey(menukey::kUpdateVersion);
    auto match = indexOfKey(stored, factory.get("key"));
    if (changed == "delete") {
        if (match) stored.erase(stored.begin() + static_cast<std::ptrdiff_t>(*match));
        return;
    }
    if (!stamp || compareVersion(*stamp, changed) != VersionOrder::Ascending) return;
    if (match) {
        stored[*match] = withoutChangedVersion(factory);
        return;
    }
    std::size_t at = stored.size() > position ? position : 0;
    stored.insert(stored.begin() + static_cast<std::ptrdiff_t>(at), factory);
    if (fields::string(factory, "key") == "Folder Icon") PXDefaultData::recoverFolderIcon();
}

} // namespace

std::string PXDefaultData::currentVersion() {
    return kProductVersion;
}

void PXDefaultData::setup() {
    repairDamagedMenuLists();
    auto stamp = suite().stringForKey(menukey::kUpdateVersion);
    bool hasMainMenu = static_cast<bool>(suite().objectForKey(menukey::kRightMenu));
    bool upToDate = hasMainMenu && stamp == currentVersion();
    if (!hasMainMenu)
        recover();
    else if (!upToDate)
        update();
    if (!upToDate) suite().setString(menukey::kUpdateVersion, currentVersion());
    if (suite().integerForKey(menukey::kCommonPathNextMenu) == 0)
        suite().setInteger(menukey::kCommonPathNextMenu, 3);
}

void PXDefaultData::recover() {
    recoverRightMenu();
    recoverNewFile();
    recoverCommonApp();
}

void PXDefaultData::recoverRightMenu() {
    _addMenuKey(menukey::kRightMenu, defaultMainMenu());
}
void PXDefaultData::recoverNewFile() {
    _addMenuKey(menukey::kNewFile, defaultNewFileMenu());
}
void PXDefaultData::recoverCommonApp() {
    _addMenuKey(menukey::kCommonApp, defaultCommonAppMenu());
}
void PXDefaultData::recoverFolderIcon() {
    _addMenuKey(menukey::kFolderIcon, defaultFolderIconMenu());
}
void PXDefaultData::recoverCommonPath() {
    _addMenuKey(menukey::kCommonPath, plist::Value::makeArray());
}

void PXDefaultData::update() {
    _updateMenuKey(menukey::kRightMenu, defaultMainMenu());
    _updateMenuKey(menukey::kNewFile, defaultNewFileMenu());
    _updateMenuKey(menukey::kCommonApp, defaultCommonAppMenu());
    _updateMenuKey(menukey::kFolderIcon, defaultFolderIconMenu());
}

void PXDefaultData::_addMenuKey(const std::string& menuKey, const plist::Value& defaultMenu) {
    plist::Array result;
    for (const auto& entry : defaultMenu.array()) {
        std::string changed = fields::string(entry, kChangedVersion);
        if (changed == "delete") continue;
        result.push_back(filehash::isValid(changed) ? withoutChangedVersion(entry) : entry);
    }
    suite().setObject(menuKey, plist::Value::makeArray(std::move(result)));
}

void PXDefaultData::_updateMenuKey(const std::string& menuKey, const plist::Value& defaultMenu) {
    plist::Value stored = suite().arrayForKey(menuKey);
    plist::Value list = stored ? stored.mutableCopy() : plist::Value::makeMutableArray();
    const auto& factory = defaultMenu.array();
    for (std::size_t i = 0; i < factory.size(); ++i)
        upgradeEntry(list.mutableArray(), factory[i], i);
    suite().setObject(menuKey, list);
}

} // namespace px
