#include "ConfigFixture.h"
#include "config/MenuKeys.h"
#include "config/PXDefaultData.h"

#include <algorithm>

using namespace px;
using px::plist::Value;

namespace {

class DefaultDataTest : public test::ConfigFixture {
  protected:
    Value entryNamed(const char* menuKey, const std::string& key) {
        for (const auto& entry : stored(menuKey).array())
            if (entry.get("key") == Value(key)) return entry;
        return {};
    }
    // The factory main menu without the given keys, as a user of an old version had it.
    void storeOldMainMenu(const std::string& version, std::vector<std::string> missing) {
        plist::Array kept;
        for (const auto& entry : PXDefaultData::defaultMainMenu().array()) {
            if (std::count(missing.begin(), missing.end(), entry.get("key").string())) continue;
            Value copy = entry.mutableCopy();
            copy.mutableDictionary().erase("is changed version");
            kept.push_back(copy.frozen());
        }
        suite->setObject(menukey::kRightMenu, Value::makeArray(kept));
        suite->setString(menukey::kUpdateVersion, version);
    }
};

TEST_F(DefaultDataTest, SetupSeedsOnceAndLeavesTheUsersEditsAtTheSameVersion) {
    PXDefaultData(*store).setup();
    EXPECT_EQ(stored(menukey::kRightMenu).array().size(), 28u);
    EXPECT_FALSE(entryNamed(menukey::kRightMenu, "Lock and Unlock").get("is changed version"));
    EXPECT_FALSE(stored(menukey::kCommonPath));
    store->removeMenuKey(menukey::kRightMenu, "Delete");
    size_t writes = suite->writeCount();
    PXDefaultData(*store).setup();
    EXPECT_EQ(suite->writeCount(), writes);
    EXPECT_FALSE(entryNamed(menukey::kRightMenu, "Delete"));
}

TEST_F(DefaultDataTest, UpgradeInsertsOnlyEntriesNewerThanTheStamp) {
    const std::vector<std::tuple<std::string, std::string, size_t>> cases{
        {"2.2.0", "Lock and Unlock", 28}, {"2.5.0", "Color Picker", 27}, {"", "Cut Paste", 27}};
    for (const auto& [version, missing, expected] : cases) {
        SCOPED_TRACE(version);
        storeOldMainMenu(version, {missing});
        if (version.empty()) suite->removeObject(menukey::kUpdateVersion);
        PXDefaultData(*store).setup();
        EXPECT_EQ(storedKeys(menukey::kRightMenu).size(), expected);
        EXPECT_EQ(suite->stringForKey(menukey::kUpdateVersion), "2.6.0");
    }
    storeOldMainMenu("2.2.0", {"Lock and Unlock"});
    PXDefaultData(*store).setup();
    EXPECT_EQ(storedKeys(menukey::kRightMenu)[9], "Lock and Unlock") << "at its factory index";
    EXPECT_EQ(entryNamed(menukey::kRightMenu, "Lock and Unlock").get("is changed version"),
              Value("2.3.0"));
}

TEST_F(DefaultDataTest, UpgradeOfAShortListInsertsAtTheTopAndRestoresFolderIcons) {
    suite->setObject(menukey::kRightMenu, Value::makeArray({dict({{"key", Value("New File")}}),
                                                            dict({{"key", Value("Delete")}})}));
    suite->setObject(menukey::kFolderIcon, Value::makeArray());
    suite->setString(menukey::kUpdateVersion, "2.0.0");
    PXDefaultData(*store).update();
    auto keys = storedKeys(menukey::kRightMenu);
    EXPECT_NE(std::find(keys.begin(), keys.end(), "Folder Icon"), keys.end());
    EXPECT_EQ(keys.front(), "Color Picker");
    EXPECT_EQ(stored(menukey::kFolderIcon).array().size(), 20u);
}

TEST_F(DefaultDataTest, UpgradeReplacesChangedEntriesAndKeepsTheOthersSettings) {
    PXDefaultData(*store).recover();
    store->updateMenuKey(menukey::kCommonApp, "Warp", "displayName", Value("My Warp"));
    store->updateMenuKey(menukey::kCommonApp, "Emacs", "displayName", Value("Mine"));
    suite->setString(menukey::kUpdateVersion, "2.3.2");
    PXDefaultData(*store).update();
    EXPECT_FALSE(entryNamed(menukey::kCommonApp, "Warp").get("displayName"));
    EXPECT_EQ(entryNamed(menukey::kCommonApp, "Emacs").get("displayName"), Value("Mine"));
}

TEST(CompareVersion, ComparesComponentsAsIntegers) {
    const std::vector<std::tuple<const char*, const char*, VersionOrder>> cases{
        {"2.10.0", "2.9.9", VersionOrder::Descending},
        {"2.3", "2.3.0", VersionOrder::Same},
        {"2.2.0", "2.3.0", VersionOrder::Ascending},
        {"2.3.1b", "2.3.1", VersionOrder::Same},
        {"", "0.0", VersionOrder::Same},
        {"-1", "0", VersionOrder::Ascending}};
    for (const auto& [left, right, order] : cases)
        EXPECT_EQ(compareVersion(left, right), order) << left << " vs " << right;
}

} // namespace
