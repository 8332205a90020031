#include "config/ListEntries.h"

#include "ConfigFixture.h"
#include "config/MenuKeys.h"
#include "config/MissingApplications.h"
#include "config/PXDefaultData.h"
#include "config/SettingsStartup.h"
#include "platform/linux/PlistFileSettings.h"
#include "plist/ItemFields.h"

using namespace px;
using px::plist::Value;
using Keys = std::vector<std::string>;

namespace {

class ListEntriesTest : public test::ConfigFixture {
  protected:
    void SetUp() override {
        ConfigFixture::SetUp();
        PXDefaultData(*store).setup();
    }
};

TEST_F(ListEntriesTest, PermanentEntriesAndTheWindowTemplateCannotBeRemoved) {
    struct Case {
        const char* menuKey;
        const char* key;
        bool removable;
    };
    const Case cases[] = {
        {menukey::kRightMenu, "Delete", false}, {menukey::kRightMenu, "New File", false},
        {menukey::kRightMenu, "Copy to", true}, {menukey::kNewFile, "New File From Window", false},
        {menukey::kNewFile, "txt", true},       {menukey::kCommonApp, "Delete", true}};
    for (const auto& item : cases) {
        SCOPED_TRACE(std::string(item.menuKey) + " " + item.key);
        EXPECT_EQ(entries::canRemove(item.menuKey, dict({{"key", Value(item.key)}})),
                  item.removable);
    }
}

TEST_F(ListEntriesTest, AddedFoldersAndApplicationsAreListedOnce) {
    test::ScopedEnv home("HOME", folder.path());
    EXPECT_TRUE(entries::addFolder(*store, "~/Music/../Documents/"));
    EXPECT_FALSE(entries::addFolder(*store, folder / "Documents"));
    EXPECT_TRUE(entries::addApplication(*store, "Text Editor", "/usr/share/icons/editor.png"));
    EXPECT_TRUE(entries::addApplication(*store, "Calculator", "accessories-calculator"));
    EXPECT_FALSE(entries::addApplication(*store, "WeChat", ""));

    Value paths = stored(menukey::kCommonPath);
    ASSERT_EQ(paths.array().size(), 1u);
    EXPECT_EQ(fields::string(paths.array()[0], "path"), folder / "Documents");
    auto apps = stored(menukey::kCommonApp).array();
    ASSERT_EQ(apps.size(), 13u);
    EXPECT_EQ(fields::string(apps[11], "iconPath"), "/usr/share/icons/editor.png");
    EXPECT_EQ(fields::string(apps[12], "icon"), "accessories-calculator");

    PXMenuItem shown = entries::displayItem(menukey::kCommonPath, paths.array()[0]);
    EXPECT_EQ(shown.menuTitle(), folder / "Documents");
    EXPECT_EQ(entries::keyOf(paths.array()[0]), folder / "Documents");
}

TEST_F(ListEntriesTest, OnlyEnabledFactoryApplicationsThatAreMissingAreOffered) {
    ASSERT_TRUE(entries::addApplication(*store, "My Own Tool", ""));
    auto installed = [](const std::string& name) { return name == "Sublime Text"; };
    auto missing = entries::missingFactoryApplications(*store, installed);
    EXPECT_EQ(missing, (Keys{"WeChat", "Visual Studio Code", "Android Studio", "IntelliJ IDEA",
                             "WebStorm"}));
    entries::switchOff(*store, menukey::kCommonApp, missing);
    EXPECT_TRUE(entries::missingFactoryApplications(*store, installed).empty());
    auto apps = stored(menukey::kCommonApp).array();
    EXPECT_FALSE(fields::flag(apps[2], "disabled")) << "Sublime Text is installed";
    EXPECT_FALSE(fields::flag(apps.back(), "disabled")) << "the person's own entry stays";
}

TEST(SettingsStartupTest, ADamagedFileIsReportedKeptAsideAndReplacedByTheFactoryMenus) {
    test::TempDir folder;
    const std::string path = folder / "group.plist";
    folder.write("group.plist", "<?xml version=\"1.0\"?><plist><dict><key>array");
    PXMenuManager store(std::make_shared<platform::PlistFileSettings>(path), folder.path());

    auto start = startup::prepareSettings(store, path);
    ASSERT_TRUE(start.damage.has_value());
    EXPECT_EQ(start.brokenCopy, path + ".broken");
    EXPECT_EQ(test::readFile(path + ".broken"), "<?xml version=\"1.0\"?><plist><dict><key>array");
    EXPECT_TRUE(start.seeded);
    EXPECT_EQ(store.menuItemArray().size(), 16u) << "the enabled factory entries";

    auto again = startup::prepareSettings(store, path);
    EXPECT_FALSE(again.damage.has_value());
    EXPECT_FALSE(again.seeded);
}

} // namespace
