#include "ConfigStore.h"

#include "config/MenuKeys.h"
#include "config/PXDefaultData.h"
#include "platform/linux/PlistFileSettings.h"

namespace px::settings {

plist::Array ConfigStore::list(const std::string& menuKey) {
    plist::Value stored = m_store->sharedDefaults().arrayForKey(menuKey);
    return stored ? stored.array() : plist::Array{};
}

void ConfigStore::setEnabled(const std::string& menuKey, const std::string& key, bool enabled) {
    m_store->updateMenuKey(menuKey, key, "disabled", plist::Value(!enabled));
}

void ConfigStore::rename(const std::string& menuKey, const std::string& key,
                         const std::string& title) {
    m_store->updateMenuKey(menuKey, key, "displayName",
                           title.empty() ? plist::Value() : plist::Value(title));
}

void ConfigStore::move(const std::string& menuKey, std::size_t from, std::size_t to) {
    m_store->changePositionMenuKey(menuKey, from, to);
}

void ConfigStore::remove(const std::string& menuKey, const std::string& key) {
    m_store->removeMenuKey(menuKey, key);
}

void ConfigStore::restoreFactory(const std::string& menuKey) {
    PXDefaultData factory(*m_store);
    if (menuKey == menukey::kRightMenu) factory.recoverRightMenu();
    if (menuKey == menukey::kNewFile) factory.recoverNewFile();
    if (menuKey == menukey::kCommonApp) factory.recoverCommonApp();
    if (menuKey == menukey::kFolderIcon) factory.recoverFolderIcon();
    if (menuKey == menukey::kCommonPath) factory.recoverCommonPath();
}

plist::Value ConfigStore::preference(const std::string& key) {
    return m_store->sharedDefaults().objectForKey(key);
}

void ConfigStore::setPreference(const std::string& key, plist::Value value) {
    m_store->sharedDefaults().setObject(key, std::move(value));
}

std::string ConfigStore::settingsFile() const {
    auto* file = dynamic_cast<platform::PlistFileSettings*>(&m_store->sharedDefaults());
    return file ? file->path() : std::string();
}

} // namespace px::settings
