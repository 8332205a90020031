#pragma once

#include "config/PXMenuManager.h"
#include "platform/MemorySettings.h"
#include "support_files/TestSupport.h"

#include <gtest/gtest.h>

namespace px::test {

// A menu store on an in-memory suite and a temporary data folder.
class ConfigFixture : public ::testing::Test {
  protected:
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
    std::shared_ptr<platform::MemorySettings> suite = std::make_shared<platform::MemorySettings>();
    std::shared_ptr<PXMenuManager> store = std::make_shared<PXMenuManager>(suite, folder.path());
};

} // namespace px::test
