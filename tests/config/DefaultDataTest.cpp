#include "ConfigFixture.h"
#include "config/MenuKeys.h"
#include "config/PXDefaultData.h"

#include <algorithm>

using namespace px;
using px::plist::Value;

namespace {

class DefaultDataTest : public test::ConfigFixture {
  protected:
    bool anyChangedVersion(const char* menuKey) {
        const auto& list = stored(menuKey).array();
        return std::any_of(list.begin(), list.end(), [](const Value& e) {
            return static_cast<bool>(e.get("is changed version"));
        });
    }
    Value entryNamed(const char* menuKey, const std::string& key) {
        for (const auto& entry : stored(menuKey).array())
            if (entry.get("key") == Value(key)) return entry;
        return {};
    }
    // The factory main menu without the given keys, as a user of an old version had it.
    void storeOldMainMenu(const std::string& version, std::vector<std::string> missing) {
        plist::Array kept;
        for (const auto& entry : PXDefaultData::defaultMainMenu().array())
            if (std::find(missing.begin(), missing.end(), entry.get("key").string()) ==
                missing.end()) {
                Value copy = entry.mutableCopy();
                copy.mutableDictionary().erase("is changed version");
                kept.push_back(copy.frozen());
            }
        suite->setObject(menukey::kRightMenu, Value::makeArray(kept));
        suite->setString(menukey::kUpdateVersion, version);
    }
};

TEST_F(DefaultDataTest, SetupSeedsAFreshSuite) {
    PXDefaultData::setup();
    EXPECT_EQ(stored(menukey::kRightMenu).array().size(), 28u);
    EXPECT_EQ(stored(menukey::kNewFile).array().size(), 20u);
    EXPECT_EQ(stored(menukey::kCommonApp).array().size(), 11u);
    EXPECT_FALSE(stored(menukey::kFolderIcon));
    EXPECT_FALSE(stored(menukey::kCommonPath));
    EXPECT_FALSE(anyChangedVersion(menukey::kRightMenu));
    EXPECT_FALSE(anyChangedVersion(menukey::kNewFile));
    EXPECT_EQ(suite->stringForKey(menukey::kUpdateVersion), PXDefaultData::currentVersion());
    EXPECT_EQ(suite->integerForKey(menukey::kCommonPathNextMenu), 3);
    EXPECT_EQ(PXDefaultData::currentVersion(), "2.6.0");
}

TEST_F(DefaultDataTest, SetupOfTheSameVersionChangesNothing) {
    PXDefaultData::setup();
    PXMenuManager::removeMenuKey(menukey::kRightMenu, "Delete");
    suite->setInteger(menukey::kCommonPathNextMenu, 4);
    size_t writes = suite->writeCount();
    PXDefaultData::setup();
    EXPECT_EQ(suite->writeCount(), writes);
    EXPECT_FALSE(entryNamed(menukey::kRightMenu, "Delete"));
}

TEST_F(DefaultDataTest, FactoryTablesCarryTheirStoredTypes) {
    auto newFiles = PXDefaultData::defaultNewFileMenu().array();
    EXPECT_EQ(newFiles[11].get("key"), Value("wps"));
    EXPECT_TRUE(newFiles[11].get("disabled").is(plist::Type::Integer));
    EXPECT_EQ(newFiles[11].get("disabled").integer(), 0);
    EXPECT_EQ(newFiles[12].get("disabled").integer(), 1);
    EXPECT_EQ(newFiles[9].get("ext"), Value("key"));
    auto icons = PXDefaultData::defaultFolderIconMenu().array();
    ASSERT_EQ(icons.size(), 20u);
    EXPECT_EQ(icons[0].get("icon"), Value("foldericon"));
    EXPECT_EQ(icons[10].get("disabled").integer(), 0);
    EXPECT_EQ(icons[11].get("disabled").integer(), 1);
    auto main = PXDefaultData::defaultMainMenu().array();
    EXPECT_EQ(main[27].get("key"), Value("System Hide Files"));
    EXPECT_TRUE(main[27].get("disabledAuth").boolean());
    EXPECT_EQ(PXDefaultData::foreverKeyArray().size(), 9u);
}

TEST_F(DefaultDataTest, UpgradeInsertsNewerEntriesAtTheirFactoryIndex) {
    storeOldMainMenu("2.2.0", {"Lock and Unlock"});
    PXDefaultData::setup();
    auto keys = storedKeys(menukey::kRightMenu);
    ASSERT_EQ(keys.size(), 28u);
    EXPECT_EQ(keys[9], "Lock and Unlock");
    EXPECT_EQ(entryNamed(menukey::kRightMenu, "Lock and Unlock").get("is changed version"),
              Value("2.3.0"));
    EXPECT_FALSE(
        entryNamed(menukey::kRightMenu, "Encrypted Compression").get("is changed version"));
    EXPECT_EQ(suite->stringForKey(menukey::kUpdateVersion), "2.6.0");
}

TEST_F(DefaultDataTest, UpgradeOfAShortListInsertsAtTheTopAndRestoresFolderIcons) {
    suite->setObject(menukey::kRightMenu, Value::makeArray({dict({{"key", Value("New File")}}),
                                                            dict({{"key", Value("Copy to")}}),
                                                            dict({{"key", Value("Delete")}})}));
    suite->setObject(menukey::kFolderIcon, Value::makeArray());
    suite->setString(menukey::kUpdateVersion, "2.0.0");
    PXDefaultData::update();
    auto keys = storedKeys(menukey::kRightMenu);
    auto folderIcon = std::find(keys.begin(), keys.end(), "Folder Icon");
    ASSERT_NE(folderIcon, keys.end());
    EXPECT_EQ(stored(menukey::kFolderIcon).array().size(), 20u);
    EXPECT_EQ(keys.front(), "Color Picker");
}

TEST_F(DefaultDataTest, UpgradeReplacesChangedEntriesLosingUserSettings) {
    PXDefaultData::recover();
    PXMenuManager::updateMenuKey(menukey::kCommonApp, "Warp", "displayName", Value("My Warp"));
    PXMenuManager::updateMenuKey(menukey::kCommonApp, "Emacs", "displayName", Value("Mine"));
    suite->setString(menukey::kUpdateVersion, "2.3.2");
    PXDefaultData::update();
    EXPECT_FALSE(entryNamed(menukey::kCommonApp, "Warp").get("displayName"));
    EXPECT_FALSE(entryNamed(menukey::kCommonApp, "Warp").get("is changed version"));
    EXPECT_EQ(entryNamed(menukey::kCommonApp, "Emacs").get("displayName"), Value("Mine"));
}

TEST_F(DefaultDataTest, UpgradeFromANewerStampInsertsNothing) {
    storeOldMainMenu("2.5.0", {"Color Picker"});
    PXDefaultData::update();
    EXPECT_EQ(storedKeys(menukey::kRightMenu).size(), 27u);
}

TEST_F(DefaultDataTest, AMissingStampWithAStoredMenuInsertsNothingButIsStamped) {
    storeOldMainMenu("x", {"Cut Paste"});
    suite->removeObject(menukey::kUpdateVersion);
    PXDefaultData::setup();
    EXPECT_EQ(storedKeys(menukey::kRightMenu).size(), 27u);
    EXPECT_EQ(suite->stringForKey(menukey::kUpdateVersion), "2.6.0");
}

TEST_F(DefaultDataTest, DeleteMarkersRemoveStoredEntriesAndAreNeverSeeded) {
    Value factory =
        Value::makeArray({dict({{"key", Value("Old")}, {"is changed version", Value("delete")}}),
                          dict({{"key", Value("Kept")}, {"is changed version", Value("1.0")}})});
    suite->setObject(
        "list", Value::makeArray({dict({{"key", Value("Old")}}), dict({{"key", Value("Kept")}})}));
    suite->setString(menukey::kUpdateVersion, "9.0");
    PXDefaultData::_updateMenuKey("list", factory);
    EXPECT_EQ(storedKeys("list"), (std::vector<std::string>{"Kept"}));
    PXDefaultData::_addMenuKey("fresh", factory);
    EXPECT_EQ(storedKeys("fresh"), (std::vector<std::string>{"Kept"}));
    EXPECT_FALSE(stored("fresh").array()[0].get("is changed version"));
}

TEST(CompareVersion, ComparesComponentsAsIntegers) {
    EXPECT_EQ(compareVersion("2.10.0", "2.9.9"), VersionOrder::Descending);
    EXPECT_EQ(compareVersion("2.3", "2.3.0"), VersionOrder::Same);
    EXPECT_EQ(compareVersion("2.2.0", "2.3.0"), VersionOrder::Ascending);
    EXPECT_EQ(compareVersion("2.3.1b", "2.3.1"), VersionOrder::Same);
    EXPECT_EQ(compareVersion("", "0.0"), VersionOrder::Same);
    EXPECT_EQ(compareVersion("-1", "0"), VersionOrder::Ascending);
}

} // namespace
