#include "ExtensionFixture.h"
#include "extension/PXHelper.h"

using namespace px;
using namespace px::test;
using px::plist::Value;

namespace {

class MenuBuilderTest : public ExtensionFixture {
  protected:
    Menu itemsMenu(std::vector<std::string> selection) {
        select(std::move(selection), work.path());
        return sync.menuForMenuKind(MenuKind::ContextualItems);
    }
    std::vector<std::string> childKeys(std::vector<std::string> selection, const char* key) {
        Menu menu = itemsMenu(std::move(selection));
        return find(menu, key) ? keys(find(menu, key)->children) : std::vector<std::string>{"-"};
    }
    Session sync{*this, recording()};
};

TEST_F(MenuBuilderTest, TagsKeepTheConfiguredPositionsWithGaps) {
    Menu menu = itemsMenu({work.write("a.txt")});
    // Disabled entries never reach the list, so "Copy to" follows four enabled entries.
    EXPECT_EQ(find(menu, "Copy to")->tag, 5);
    EXPECT_EQ(find(menu, "Copy Path")->tag, 13);
    EXPECT_EQ(find(find(menu, "New File")->children, "txt")->tag, 102);
    // A child shown on the top level instead keeps its position in the submenu.
    store->updateMenuKey(menukey::kNewFile, "rtf", "toMainMenu", Value(true));
    menu = sync.menuForMenuKind(MenuKind::ContextualItems);
    EXPECT_FALSE(find(find(menu, "New File")->children, "rtf"));
    EXPECT_EQ(find(find(menu, "New File")->children, "json")->tag, 104);
}

// The file's own format is left out, but a ".jpg" file may still become a ".jpeg" one.
TEST_F(MenuBuilderTest, ConvertTargetsOfJpegAndPdfFiles) {
    const auto jpeg = childKeys({work.write("c.jpg")}, "Convert to");
    EXPECT_EQ(std::count(jpeg.begin(), jpeg.end(), "JPEG"), 1);
    const auto pdf = childKeys({work.write("d.pdf")}, "Convert to");
    EXPECT_EQ(std::count(pdf.begin(), pdf.end(), "PDF"), 0);
    Menu menu = itemsMenu({work.write("d.pdf"), work.write("e.pdf")});
    EXPECT_EQ(find(find(menu, "Convert to")->children, "PDF")->title, localized("Merge to PDF"));
}

TEST_F(MenuBuilderTest, TitlesFollowTheCutListAndTheFilesLock) {
    enable("File Info");
    enable("Lock and Unlock");
    const std::string sub = work.mkdir("sub"), cut = work.write("sub/x.txt");
    const std::string a = work.write("a.txt"), b = work.write("b.txt");
    store->updateMenuKey(menukey::kRightMenu, "Cut Paste", "cutPaths",
                         Value::makeArray({Value(cut)}));
    select({}, sub);
    EXPECT_FALSE(find(sync.menuForMenuKind(MenuKind::ContextualContainer), "Cut Paste"))
        << "no pasting into the folder the items come from";
    select({}, work.path());
    Menu container = sync.menuForMenuKind(MenuKind::ContextualContainer);
    EXPECT_EQ(find(container, "Cut Paste")->title, localized("Paste"));
    Menu one = itemsMenu({a});
    EXPECT_EQ(find(one, "Cut Paste")->title, localized("Cut"));
    EXPECT_EQ(find(one, "Lock and Unlock")->title, localized("Lock"));
    EXPECT_EQ(keys(find(one, "File Info")->children),
              (std::vector<std::string>{"MD5", "SHA1", "SHA256", "SHA512", "Go Set"}));
    EXPECT_FALSE(find(itemsMenu({a, b}), "File Info")) << "one file only";
    ASSERT_EQ(::chmod(a.c_str(), 0444), 0);
    EXPECT_EQ(find(itemsMenu({a}), "Lock and Unlock")->title, localized("Unlock"));
}

TEST_F(MenuBuilderTest, PreferencesDropIconsAndTheSettingsEntry) {
    EXPECT_FALSE(find(itemsMenu({work.write("a.txt")}), "Copy to")->icon.empty());
    for (const char* preference : {"pref check1", "pref check2", "pref check4"})
        suite->setBool(preference, true);
    Menu menu = sync.menuForMenuKind(MenuKind::ContextualItems);
    EXPECT_TRUE(find(menu, "Copy to")->icon.empty());
    const auto& children = find(menu, "New File")->children;
    EXPECT_NE(children.back().key, "Go Set");
    EXPECT_TRUE(children.front().icon.empty());
}

TEST_F(MenuBuilderTest, ACommonPathListsItsSubfoldersAsCopyTargets) {
    const std::string favourite = work.mkdir("fav");
    for (int i = 0; i < 25; ++i)
        work.mkdir("fav/d" + std::to_string(i));
    work.write("fav/file.txt");
    work.mkdir("fav/.hidden");
    store->addMenuKey(menukey::kCommonPath, Value::makeDictionary({{"path", Value(favourite)}}),
                      false);
    Menu menu = itemsMenu({work.write("a.txt")});
    const auto& copy = find(menu, "Copy to")->children;
    ASSERT_EQ(copy.size(), 3u);
    EXPECT_EQ(copy[0].key, "Select Folder");
    EXPECT_EQ(copy[1].key, favourite);
    const auto& subfolders = copy[1].children;
    ASSERT_EQ(subfolders.size(), 22u);
    EXPECT_EQ(subfolders.front().key, "Current Directory");
    EXPECT_TRUE(subfolders.back().separator);
    EXPECT_EQ(subfolders[1].tag, 50202);
}

TEST_F(MenuBuilderTest, CommonPathSubmenuFollowsItsPreference) {
    const std::string favourite = work.mkdir("fav");
    for (int i = 0; i < 33; ++i)
        work.write("fav/f" + std::to_string(i));
    auto items = [&](int preference) {
        suite->setInteger(menukey::kCommonPathNextMenu, preference);
        select({}, work.path());
        const PXMenuItem::List mainItems = store->menuItemArray();
        return PXHelper(sync.request(MenuKind::ContextualContainer), mainItems)
            .commomPathNextMenuWithPath(favourite);
    };
    EXPECT_TRUE(items(0).empty());
    EXPECT_EQ(items(2).front()->key, "Show in Finder");
    EXPECT_EQ(items(3).size(), 22u);
    auto mixed = items(4);
    EXPECT_EQ(mixed[11]->key, "More Files");
    EXPECT_TRUE(mixed[12]->isSepLine());
}

} // namespace
