#include "ConfigFixture.h"
#include "config/MenuKeys.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

using namespace px;
using px::plist::Value;

namespace {

using TextMember = std::string PXMenuItem::*;
using FlagMember = bool PXMenuItem::*;

const std::pair<const char*, TextMember> kTexts[] = {{"appName", &PXMenuItem::appName},
                                                     {"displayName", &PXMenuItem::displayName},
                                                     {"ext", &PXMenuItem::ext},
                                                     {"fileName", &PXMenuItem::fileName},
                                                     {"icon", &PXMenuItem::icon},
                                                     {"iconPath", &PXMenuItem::iconPath},
                                                     {"templatePath", &PXMenuItem::templatePath}};
const std::pair<const char*, FlagMember> kFlags[] = {
    {"disabledAuth", &PXMenuItem::disabledAuth},
    {"mainMenuNewFile", &PXMenuItem::isMainMenuNewFile},
    {"special", &PXMenuItem::isSpecialFile},
    {"toMainMenu", &PXMenuItem::isAddToMainMenu}};

// Each list reads only the fields its entries carry; an entry holding every field shows which.
class ListFieldsTest : public test::ConfigFixture {
  protected:
    void storeEverything(const char* menuKey) {
        plist::Dictionary fields{{"key", Value("Entry")}};
        for (const auto& [name, member] : kTexts)
            fields.emplace(name, Value(std::string(name) + " value"));
        for (const auto& [name, member] : kFlags)
            fields.emplace(name, Value(true));
        suite->setObject(menuKey, Value::makeArray({dict(std::move(fields))}));
    }

    // The fields that reached the one item built, by name in sorted order.
    static std::vector<std::string> filled(const PXMenuItem::List& items) {
        EXPECT_EQ(items.size(), 1u);
        if (items.empty()) return {};
        const PXMenuItem& item = *items.front();
        EXPECT_EQ(item.key, "Entry");
        std::vector<std::string> names;
        for (const auto& [name, member] : kTexts)
            if (item.*member == std::string(name) + " value") names.push_back(name);
        for (const auto& [name, member] : kFlags)
            if (item.*member) names.push_back(name);
        std::sort(names.begin(), names.end());
        return names;
    }

    using Names = std::vector<std::string>;
};

TEST_F(ListFieldsTest, EachListReadsTheFieldsOfItsOwnEntries) {
    storeEverything(menukey::kRightMenu);
    EXPECT_EQ(filled(store->menuItemArray()),
              (Names{"appName", "disabledAuth", "displayName", "ext", "fileName", "icon",
                     "iconPath", "mainMenuNewFile", "special", "templatePath", "toMainMenu"}));

    storeEverything(menukey::kNewFile);
    EXPECT_EQ(filled(store->newFileTemplateMenuArray(false)),
              (Names{"displayName", "ext", "fileName", "icon", "iconPath", "special",
                     "templatePath", "toMainMenu"}));

    storeEverything(menukey::kFolderIcon);
    EXPECT_EQ(filled(store->folderIconMenuArray()), (Names{"displayName", "icon", "iconPath"}));

    storeEverything(menukey::kCommonApp);
    auto apps = store->commonAppMenuArray();
    EXPECT_EQ(filled(apps), (Names{"displayName", "icon", "iconPath", "toMainMenu"}));
    EXPECT_EQ(apps.front()->appName, "Entry") << "a common application is named by its key";
}

} // namespace
