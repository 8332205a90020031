#include "ConfigFixture.h"
#include "config/MenuKeys.h"
#include "config/PXDefaultData.h"

#include <algorithm>

using namespace px;
using px::plist::Value;

namespace {

class MenuListsTest : public test::ConfigFixture {
  protected:
    void storeMain(std::vector<Value> entries) {
        suite->setObject(menukey::kRightMenu, Value::makeArray(std::move(entries)));
    }
    static PXMenuItem::Ptr find(const PXMenuItem::List& items, const std::string& key) {
        auto it = std::find_if(items.begin(), items.end(), [&](auto& i) { return i->key == key; });
        return it == items.end() ? nullptr : *it;
    }
};

TEST_F(MenuListsTest, DisabledEntriesAreLeftOutAndOrderKept) {
    storeMain({dict({{"key", Value("New File")}}),
               dict({{"key", Value("Copy to")}, {"disabled", Value(true)}}),
               dict({{"key", Value("Move to")}}), dict({{"key", Value("Delete")}})});
    EXPECT_EQ(keysOf(PXMenuManager::menuItemArray()),
              (std::vector<std::string>{"New File", "Move to", "Delete"}));
}

TEST_F(MenuListsTest, AttributeRulesFollowTheirOrder) {
    storeMain({dict({{"key", Value("Terminal To")}}), dict({{"key", Value("Terminal Window")}}),
               dict({{"key", Value("Lock and Unlock")}, {"appName", Value("Gedit")}}),
               dict({{"key", Value("Color Picker")}, {"disabledAuth", Value(false)}}),
               dict({{"key", Value("Hide Selected Files")}}),
               dict({{"key", Value("Hide All Files")}}), dict({{"key", Value("Unhide All Files")}}),
               dict({{"key", Value("Convert to")}}), dict({{"key", Value("Execute Script")}}),
               dict({{"key", Value("Copy Path")}})});
    auto items = PXMenuManager::menuItemArray();
    EXPECT_EQ(find(items, "Terminal To")->serve, "New Terminal at Folder");
    auto lock = find(items, "Lock and Unlock");
    EXPECT_TRUE(lock->isNeedSelectURL);
    EXPECT_FALSE(lock->isNotNeedURL);
    EXPECT_TRUE(find(items, "Color Picker")->disabledAuth);
    EXPECT_TRUE(find(items, "Hide Selected Files")->isNeedSelectURL);
    EXPECT_FALSE(find(items, "Hide All Files")->isNeedSelectURL);
    EXPECT_FALSE(find(items, "Unhide All Files")->isNeedSelectURL);
    EXPECT_EQ(find(items, "Unhide All Files")->command, "chflags nohidden");
    EXPECT_EQ(find(items, "Convert to")->formats.size(), 20u);
    EXPECT_EQ(find(items, "Convert to")->formats[17], "rp");
    EXPECT_EQ(find(items, "Execute Script")->formats, (std::vector<std::string>{"sh", "scpt"}));
    auto copyPath = find(items, "Copy Path");
    EXPECT_TRUE(copyPath->forever);
    EXPECT_FALSE(copyPath->isNeedSelectURL || copyPath->isNotNeedURL);
    EXPECT_EQ(keysOf(PXMenuManager::belongAppMenuArray()),
              (std::vector<std::string>{"Terminal Window"}));
}

TEST_F(MenuListsTest, ApplicationEntriesJoinTheAppListOnceAndFlagsConvertLoosely) {
    storeMain({dict({{"key", Value("Code")}, {"appName", Value("Visual Studio Code")}}),
               dict({{"key", Value("iTerm2 Window")}}),
               dict({{"key", Value("Delete")}, {"disabled", Value("no")}}),
               dict({{"key", Value("Copy to")}, {"disabled", Value("YES")}}),
               dict({{"key", Value("Move to")}, {"disabled", Value(2)}})});
    PXMenuManager::menuItemArray();
    auto items = PXMenuManager::menuItemArray();
    EXPECT_EQ(keysOf(items), (std::vector<std::string>{"Code", "iTerm2 Window", "Delete"}));
    EXPECT_EQ(keysOf(PXMenuManager::belongAppMenuArray()),
              (std::vector<std::string>{"Code", "iTerm2 Window"}));
    EXPECT_TRUE(items[0]->isNotNeedURL);
}

TEST_F(MenuListsTest, WrongTypedEntriesNeitherCrashNorLeak) {
    storeMain({Value("not a dictionary"), dict({{"key", Value(42)}, {"disabled", Value("maybe")}}),
               dict({{"key", Value("Cut Paste")}, {"cutPaths", Value("/tmp/x")}}),
               dict({{"key", Value("Cut Paste")},
                     {"cutPaths", Value::makeArray({Value("/a"), Value(3)})}})});
    auto items = PXMenuManager::menuItemArray();
    ASSERT_EQ(items.size(), 3u);
    EXPECT_EQ(items[0]->key, "");
    EXPECT_TRUE(items[1]->cutPaths.empty());
    EXPECT_EQ(items[2]->cutPaths, (std::vector<std::string>{"/a"}));
    suite->setObject(menukey::kRightMenu, Value(7));
    EXPECT_TRUE(PXMenuManager::menuItemArray().empty());
}

TEST_F(MenuListsTest, EachListReadsItsOwnFieldsAmongUnknownOnes) {
    Value full = dict({{"Key", Value("upper case is another field")},
                       {"aaa", Value(1)},
                       {"appName", Value("Gedit")},
                       {"disabledAuth", Value("YES")},
                       {"disabledOpenPath", Value(1)},
                       {"displayName", Value(3)},
                       {"ext", Value("md")},
                       {"fileName", Value("Notes")},
                       {"icon", Value("txt")},
                       {"iconPath", Value("/icons/notes.png")},
                       {"key", Value("Notes")},
                       {"keyword", Value("not the key")},
                       {"mainMenuNewFile", Value("0")},
                       {"special", Value(true)},
                       {"templatePath", Value("/t/notes.md")},
                       {"toMainMenu", Value("true")},
                       {"zzz", Value("last")}});
    storeMain({full});
    auto main = PXMenuManager::menuItemArray();
    ASSERT_EQ(main.size(), 1u);
    const PXMenuItem& item = *main[0];
    EXPECT_EQ(item.key, "Notes");
    EXPECT_EQ(item.appName, "Gedit");
    EXPECT_TRUE(item.disabledAuth && item.disabledOpenPath);
    EXPECT_TRUE(item.isSpecialFile && item.isAddToMainMenu);
    EXPECT_FALSE(item.isMainMenuNewFile);
    EXPECT_EQ(item.displayName, "") << "a number is no text";
    EXPECT_EQ(item.ext + item.fileName + item.icon, "mdNotestxt");
    EXPECT_EQ(item.iconPath + item.templatePath, "/icons/notes.png/t/notes.md");

    suite->setObject(menukey::kNewFile, Value::makeArray({full}));
    suite->setObject(menukey::kCommonApp, Value::makeArray({full}));
    suite->setObject(menukey::kFolderIcon, Value::makeArray({full}));
    auto newFile = PXMenuManager::newFileTemplateMenuArray(false).at(0);
    EXPECT_EQ(newFile->templatePath, "/t/notes.md");
    EXPECT_TRUE(newFile->isSpecialFile && newFile->isAddToMainMenu);
    EXPECT_EQ(newFile->appName, "");
    EXPECT_FALSE(newFile->disabledAuth);
    auto app = PXMenuManager::commonAppMenuArray().at(0);
    EXPECT_EQ(app->appName, "Notes");
    EXPECT_TRUE(app->disabledOpenPath && app->isAddToMainMenu);
    EXPECT_EQ(app->ext, "");
    auto icon = PXMenuManager::folderIconMenuArray().at(0);
    EXPECT_EQ(icon->key + icon->icon + icon->iconPath, "Notestxt/icons/notes.png");
    EXPECT_FALSE(icon->isAddToMainMenu);
    EXPECT_EQ(icon->templatePath, "");
}

TEST_F(MenuListsTest, NewFileListHonoursTheIncludeDisabledFlag) {
    PXDefaultData::recoverNewFile();
    auto enabled = PXMenuManager::newFileTemplateMenuArray(false);
    auto all = PXMenuManager::newFileTemplateMenuArray(true);
    EXPECT_EQ(enabled.size(), 12u);
    ASSERT_EQ(all.size(), 20u);
    auto et = find(all, "et");
    ASSERT_TRUE(et);
    EXPECT_TRUE(et->disabled);
    EXPECT_FALSE(find(enabled, "et"));
    EXPECT_EQ(all.front()->key, "New File From Window");
}

TEST_F(MenuListsTest, CommonPathsAreStandardisedAndKeyedByPath) {
    test::ScopedXdg xdg;
    suite->setObject(menukey::kCommonPath,
                     Value::makeArray({dict({{"path", Value("~/Documents/../Desktop//")},
                                             {"key", Value("ignored")},
                                             {"icon", Value("star")}})}));
    auto paths = PXMenuManager::commonPathMenuArray();
    ASSERT_EQ(paths.size(), 1u);
    EXPECT_EQ(paths[0]->path, xdg.home() + "/Desktop");
    EXPECT_EQ(paths[0]->key, paths[0]->path);
    EXPECT_EQ(paths[0]->icon, "folder");
}

TEST_F(MenuListsTest, CommonAppsOpenTheApplicationNamedByTheirKey) {
    PXDefaultData::recoverCommonApp();
    auto apps = PXMenuManager::commonAppMenuArray();
    ASSERT_EQ(apps.size(), 6u);
    EXPECT_EQ(apps[1]->appName, "Visual Studio Code");
    EXPECT_TRUE(PXMenuManager::folderIconMenuArray().empty());
}

} // namespace
