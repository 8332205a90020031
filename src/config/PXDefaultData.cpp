#include "config/PXDefaultData.h"

#include "config/MenuKeys.h"
#include "config/PXMenuManager.h"
#include "config/StoredLists.h"
#include "plist/ItemFields.h"
#include "support/BuildConfig.h"
#include "support/FileHash.h"

namespace px {

namespace {

constexpr const char* kChangedVersion = "is changed version";

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

} // namespace

platform::Settings& PXDefaultData::suite() const {
    return m_store.sharedDefaults();
}

// One upgrade step for one factory entry at index `position` of the factory list.
void PXDefaultData::upgradeEntry(plist::Array& stored, const plist::Value& factory,
                                 std::size_t position) {
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
    if (fields::string(factory, "key") == "Folder Icon") recoverFolderIcon();
}

std::string PXDefaultData::currentVersion() {
    return kProductVersion;
}

void PXDefaultData::setup() {
    repairDamagedMenuLists(m_store);
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
    addFactoryList(menukey::kRightMenu, defaultMainMenu());
}
void PXDefaultData::recoverNewFile() {
    addFactoryList(menukey::kNewFile, defaultNewFileMenu());
}
void PXDefaultData::recoverCommonApp() {
    addFactoryList(menukey::kCommonApp, defaultCommonAppMenu());
}
void PXDefaultData::recoverFolderIcon() {
    addFactoryList(menukey::kFolderIcon, defaultFolderIconMenu());
}
void PXDefaultData::recoverCommonPath() {
    addFactoryList(menukey::kCommonPath, plist::Value::makeArray());
}

void PXDefaultData::update() {
    upgradeList(menukey::kRightMenu, defaultMainMenu());
    upgradeList(menukey::kNewFile, defaultNewFileMenu());
    upgradeList(menukey::kCommonApp, defaultCommonAppMenu());
    upgradeList(menukey::kFolderIcon, defaultFolderIconMenu());
}

void PXDefaultData::addFactoryList(const std::string& menuKey, const plist::Value& defaultMenu) {
    plist::Array result;
    for (const auto& entry : defaultMenu.array()) {
        std::string changed = fields::string(entry, kChangedVersion);
        if (changed == "delete") continue;
        result.push_back(filehash::isValid(changed) ? withoutChangedVersion(entry) : entry);
    }
    suite().setObject(menuKey, plist::Value::makeArray(std::move(result)));
}

void PXDefaultData::upgradeList(const std::string& menuKey, const plist::Value& defaultMenu) {
    plist::Value stored = suite().arrayForKey(menuKey);
    plist::Value list = stored ? stored.mutableCopy() : plist::Value::makeMutableArray();
    const auto& factory = defaultMenu.array();
    for (std::size_t i = 0; i < factory.size(); ++i)
        upgradeEntry(list.mutableArray(), factory[i], i);
    suite().setObject(menuKey, list);
}

} // namespace px
