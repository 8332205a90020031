#include "config/StoredLists.h"

#include "config/MenuKeys.h"
#include "config/PXDefaultData.h"
#include "config/PXMenuManager.h"

#include <algorithm>
#include <array>

namespace px {

namespace {

struct ListKind {
    const char* menuKey;
    const char* nameField;
    void (PXDefaultData::*restore)();
};

constexpr std::array<ListKind, 5> kLists{{
    {menukey::kRightMenu, "key", &PXDefaultData::recoverRightMenu},
    {menukey::kNewFile, "key", &PXDefaultData::recoverNewFile},
    {menukey::kCommonApp, "key", &PXDefaultData::recoverCommonApp},
    {menukey::kFolderIcon, "key", &PXDefaultData::recoverFolderIcon},
    {menukey::kCommonPath, "path", &PXDefaultData::recoverCommonPath},
}};

const ListKind* kindOf(const std::string& menuKey) {
    auto it = std::ranges::find_if(kLists, [&](const ListKind& k) { return menuKey == k.menuKey; });
    return it == kLists.end() ? nullptr : &*it;
}

// Empty when the stored value is a usable list (or none); otherwise why it is not.
std::string damageOf(const plist::Value& stored, const ListKind& kind) {
    if (!stored) return {};
    if (!stored.isArray()) return std::string("\"") + kind.menuKey + "\" is not a list";
    for (const auto& entry : stored.array())
        if (!entry.isDictionary() || !entry.get(kind.nameField).isString())
            return std::string("\"") + kind.menuKey + "\" holds an entry without a \"" +
                   kind.nameField + "\" text";
    return {};
}

plist::Value checked(const PXMenuManager& store, const ListKind& kind) {
    auto& suite = store.sharedDefaults();
    plist::Value stored = suite.objectForKey(kind.menuKey);
    const std::string damage = damageOf(stored, kind);
    if (damage.empty()) return stored;
    suite.keepDamagedCopy(damage);
    (PXDefaultData(store).*kind.restore)();
    return suite.arrayForKey(kind.menuKey);
}

} // namespace

plist::Value storedMenuList(const PXMenuManager& store, const std::string& menuKey) {
    if (const ListKind* kind = kindOf(menuKey)) return checked(store, *kind);
    return store.sharedDefaults().arrayForKey(menuKey);
}

void repairDamagedMenuLists(const PXMenuManager& store) {
    for (const auto& kind : kLists)
        checked(store, kind);
}

} // namespace px
