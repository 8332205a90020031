#pragma once

#include "config/PXMenuManager.h"
#include "platform/fake/MemorySettings.h"
#include "support_files/TestSupport.h"

#include <gtest/gtest.h>

namespace px::test {

// Points the menu manager at an in-memory suite and a temporary data folder.
class ConfigFixture : public ::testing::Test {
  protected:
    void SetUp() override {
        suite = std::make_shared<platform::MemorySettings>();
        PXMenuManager::configure(suite, folder.path());
    }
    void TearDown() override { PXMenuManager::resetToDefaultLocations(); }

    plist::Value stored(const char* menuKey) { return suite->objectForKey(menuKey); }
    std::vector<std::string> storedKeys(const char* menuKey) {
        std::vector<std::string> keys;
        if (auto list = stored(menuKey))
            for (const auto& entry : list.array())
                keys.push_back(entry.get("key").isString() ? entry.get("key").string() : "?");
        return keys;
    }
    static plist::Value dict(plist::Dictionary fields) {
        return plist::Value::makeDictionary(std::move(fields));
    }
    static std::vector<std::string> keysOf(const PXMenuItem::List& items) {
        std::vector<std::string> keys;
        for (const auto& item : items)
            keys.push_back(item->key);
        return keys;
    }

    TempDir folder;
    std::shared_ptr<platform::MemorySettings> suite;
};

} // namespace px::test
