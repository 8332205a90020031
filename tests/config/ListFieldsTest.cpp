#include "ConfigFixture.h"
#include "config/MenuKeys.h"

#include <string>
#include <vector>

using namespace px;
using px::plist::Value;

namespace {

// Each list reads only the fields its entries carry; an entry holding every field shows which.
class ListFieldsTest : public test::ConfigFixture {
  protected:
    void storeEverything(const char* menuKey) {
        plist::Dictionary fields{{"key", Value("Entry")}};
        for (const char* text :
             {"appName", "displayName", "ext", "fileName", "icon", "iconPath", "templatePath"})
            fields.emplace(text, Value(std::string(text) + " value"));
        for (const char* flag :
             {"disabledAuth", "disabledOpenPath", "mainMenuNewFile", "special", "toMainMenu"})
            fields.emplace(flag, Value(true));
        suite->setObject(menuKey, Value::makeArray({dict(std::move(fields))}));
    }

    static std::vector<std::string> filled(const PXMenuItem::List& items) {
        EXPECT_EQ(items.size(), 1u);
        if (items.empty()) return {};
        const PXMenuItem& item = *items.front();
        std::vector<std::string> names;
        auto text = [&](const char* name, const std::string& value) {
            if (value == std::string(name) + " value") names.push_back(name);
        };
        auto flag = [&](const char* name, bool value) {
            if (value) names.push_back(name);
        };
        text("appName", item.appName);
        flag("disabledAuth", item.disabledAuth);
        flag("disabledOpenPath", item.disabledOpenPath);
        text("displayName", item.displayName);
        text("ext", item.ext);
        text("fileName", item.fileName);
        text("icon", item.icon);
        text("iconPath", item.iconPath);
        flag("mainMenuNewFile", item.isMainMenuNewFile);
        flag("special", item.isSpecialFile);
        text("templatePath", item.templatePath);
        flag("toMainMenu", item.isAddToMainMenu);
        EXPECT_EQ(item.key, "Entry");
        return names;
    }

    using Names = std::vector<std::string>;
};

TEST_F(ListFieldsTest, EachListReadsTheFieldsOfItsOwnEntries) {
    storeEverything(menukey::kRightMenu);
    EXPECT_EQ(
        filled(PXMenuManager::menuItemArray()),
        (Names{"appName", "disabledAuth", "disabledOpenPath", "displayName", "ext", "fileName",
               "icon", "iconPath", "mainMenuNewFile", "special", "templatePath", "toMainMenu"}));

    storeEverything(menukey::kNewFile);
    EXPECT_EQ(filled(PXMenuManager::newFileTemplateMenuArray(false)),
              (Names{"displayName", "ext", "fileName", "icon", "iconPath", "special",
                     "templatePath", "toMainMenu"}));

    storeEverything(menukey::kFolderIcon);
    EXPECT_EQ(filled(PXMenuManager::folderIconMenuArray()),
              (Names{"displayName", "icon", "iconPath"}));

    storeEverything(menukey::kCommonApp);
    auto apps = PXMenuManager::commonAppMenuArray();
    EXPECT_EQ(filled(apps),
              (Names{"disabledOpenPath", "displayName", "icon", "iconPath", "toMainMenu"}));
    EXPECT_EQ(apps.front()->appName, "Entry") << "a common application is named by its key";
}

} // namespace
