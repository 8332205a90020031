#pragma once

#include "config/PXMenuManager.h"
#include "plist/Value.h"

#include <cstddef>
#include <memory>
#include <string>

namespace px::settings {

// The window's one way to the menu store: every read and edit goes through the store instance
// it holds, each edit one locked whole-file write, so nothing another writer saved is lost.
class ConfigStore {
  public:
    explicit ConfigStore(std::shared_ptr<PXMenuManager> store) : m_store(std::move(store)) {}

    plist::Array list(const std::string& menuKey);
    void setEnabled(const std::string& menuKey, const std::string& key, bool enabled);
    // An empty title removes the entry's own title, so the menu shows its standard one.
    void rename(const std::string& menuKey, const std::string& key, const std::string& title);
    void move(const std::string& menuKey, std::size_t from, std::size_t to);
    void remove(const std::string& menuKey, const std::string& key);
    // Writes the factory list for one menu key.
    void restoreFactory(const std::string& menuKey);

    plist::Value preference(const std::string& key);
    void setPreference(const std::string& key, plist::Value value);

    platform::Settings& suite() { return m_store->sharedDefaults(); }
    PXMenuManager& manager() { return *m_store; }
    const std::shared_ptr<PXMenuManager>& shared() const { return m_store; }
    // The file the suite is kept in; empty when it is not kept in a file.
    std::string settingsFile() const;

  private:
    std::shared_ptr<PXMenuManager> m_store;
};

} // namespace px::settings
