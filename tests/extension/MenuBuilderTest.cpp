#include "ExtensionFixture.h"
#include "extension/MenuTag.h"
#include "extension/PXHelper.h"

using namespace px;
using namespace px::test;
using px::plist::Value;

namespace {

class MenuBuilderTest : public ExtensionFixture {};

TEST_F(MenuBuilderTest, ContainerMenuOfAFolderHidesSelectionEntries) {
    select({}, work.path());
    RecordingFinderSync sync;
    Menu menu = sync.menuForMenuKind(MenuKind::ContextualContainer);
    EXPECT_FALSE(sync.isSelectURL);
    EXPECT_TRUE(find(menu, "Hide All Files"));
    EXPECT_FALSE(find(menu, "Hide Selected Files"));
    EXPECT_FALSE(find(menu, "Copy to"));
    EXPECT_TRUE(find(menu, "Color Picker"));
}

TEST_F(MenuBuilderTest, TagsKeepTheConfiguredPositionsWithGaps) {
    std::string file = work.write("a.txt");
    select({file}, work.path());
    RecordingFinderSync sync;
    Menu menu = sync.menuForMenuKind(MenuKind::ContextualItems);
    EXPECT_EQ(find(menu, "New File")->tag, 1);
    // Disabled entries never reach the list, so "Copy to" follows four enabled entries.
    EXPECT_EQ(find(menu, "Copy to")->tag, 5);
    EXPECT_EQ(find(menu, "Copy Path")->tag, 13);
    const auto& templates = find(menu, "New File")->children;
    EXPECT_EQ(templates[1].key, "txt");
    EXPECT_EQ(templates[1].tag, 102);
    // A child shown on the top level instead keeps its position in the submenu.
    PXMenuManager::updateMenuKey(menukey::kNewFile, "rtf", "toMainMenu", Value(true));
    Menu again = sync.menuForMenuKind(MenuKind::ContextualItems);
    const auto& after = find(again, "New File")->children;
    EXPECT_EQ(after[2].key, "json");
    EXPECT_EQ(after[2].tag, 104);
}

TEST_F(MenuBuilderTest, ConvertTargetsDependOnTheExtensionAndCount) {
    std::string png = work.write("a.png"), tif = work.write("b.tif"), jpg = work.write("c.jpg");
    RecordingFinderSync sync;
    select({png}, work.path());
    auto targets =
        keys(find(sync.menuForMenuKind(MenuKind::ContextualItems), "Convert to")->children);
    EXPECT_EQ(std::count(targets.begin(), targets.end(), "PNG"), 0);
    EXPECT_EQ(std::count(targets.begin(), targets.end(), "PDF"), 1);
    select({tif}, work.path());
    targets = keys(find(sync.menuForMenuKind(MenuKind::ContextualItems), "Convert to")->children);
    EXPECT_EQ(std::count(targets.begin(), targets.end(), "TIFF"), 0);
    select({jpg}, work.path());
    targets = keys(find(sync.menuForMenuKind(MenuKind::ContextualItems), "Convert to")->children);
    EXPECT_EQ(std::count(targets.begin(), targets.end(), "JPEG"), 1);
    std::string pdf = work.write("d.pdf"), pdf2 = work.write("e.pdf");
    select({pdf}, work.path());
    targets = keys(find(sync.menuForMenuKind(MenuKind::ContextualItems), "Convert to")->children);
    EXPECT_EQ(std::count(targets.begin(), targets.end(), "PDF"), 0);
    select({pdf, pdf2}, work.path());
    Menu built = sync.menuForMenuKind(MenuKind::ContextualItems);
    const auto& merged = find(built, "Convert to")->children;
    auto pdfEntry =
        std::find_if(merged.begin(), merged.end(), [](auto& e) { return e.key == "PDF"; });
    ASSERT_NE(pdfEntry, merged.end());
    EXPECT_EQ(pdfEntry->title, localized("Merge to PDF"));
}

TEST_F(MenuBuilderTest, CutListDecidesBetweenCutPasteAndNothing) {
    std::string sub = work.mkdir("sub");
    std::string cut = work.write("sub/x.txt");
    PXMenuManager::updateMenuKey(menukey::kRightMenu, "Cut Paste", "cutPaths",
                                 Value::makeArray({Value(cut)}));
    RecordingFinderSync sync;
    select({}, sub);
    EXPECT_FALSE(find(sync.menuForMenuKind(MenuKind::ContextualContainer), "Cut Paste"));
    select({}, work.path());
    Menu container = sync.menuForMenuKind(MenuKind::ContextualContainer);
    const MenuEntry* paste = find(container, "Cut Paste");
    ASSERT_TRUE(paste);
    EXPECT_EQ(paste->title, localized("Paste"));
    select({cut}, sub);
    EXPECT_EQ(find(sync.menuForMenuKind(MenuKind::ContextualItems), "Cut Paste")->title,
              localized("Cut"));
}

TEST_F(MenuBuilderTest, FileInfoOnlyForOneFileAndLockTitleFollowsTheFile) {
    enable("File Info");
    enable("Lock and Unlock");
    std::string a = work.write("a.txt"), b = work.write("b.txt");
    RecordingFinderSync sync;
    select({a}, work.path());
    Menu one = sync.menuForMenuKind(MenuKind::ContextualItems);
    ASSERT_TRUE(find(one, "File Info"));
    EXPECT_EQ(keys(find(one, "File Info")->children),
              (std::vector<std::string>{"MD5", "SHA1", "SHA256", "SHA512", "Go Set"}));
    EXPECT_EQ(find(one, "Lock and Unlock")->title, localized("Lock"));
    select({a, b}, work.path());
    EXPECT_FALSE(find(sync.menuForMenuKind(MenuKind::ContextualItems), "File Info"));
    ASSERT_EQ(::chmod(a.c_str(), 0444), 0);
    select({a}, work.path());
    EXPECT_EQ(find(sync.menuForMenuKind(MenuKind::ContextualItems), "Lock and Unlock")->title,
              localized("Unlock"));
}

TEST_F(MenuBuilderTest, PreferencesDropIconsAndTheSettingsEntry) {
    std::string a = work.write("a.txt");
    select({a}, work.path());
    RecordingFinderSync sync;
    EXPECT_FALSE(find(sync.menuForMenuKind(MenuKind::ContextualItems), "Copy to")->icon.empty());
    suite->setBool("pref check1", true);
    suite->setBool("pref check2", true);
    suite->setBool("pref check4", true);
    Menu menu = sync.menuForMenuKind(MenuKind::ContextualItems);
    EXPECT_TRUE(find(menu, "Copy to")->icon.empty());
    const auto& children = find(menu, "New File")->children;
    EXPECT_NE(children.back().key, "Go Set");
    EXPECT_TRUE(children.front().icon.empty());
}

TEST_F(MenuBuilderTest, ACommonPathListsItsSubfoldersAsCopyTargets) {
    std::string favourite = work.mkdir("fav");
    for (int i = 0; i < 25; ++i)
        work.mkdir("fav/d" + std::to_string(i));
    work.write("fav/file.txt");
    work.mkdir("fav/.hidden");
    PXMenuManager::addMenuKey(menukey::kCommonPath,
                              Value::makeDictionary({{"path", Value(favourite)}}), false);
    std::string a = work.write("a.txt");
    select({a}, work.path());
    RecordingFinderSync sync;
    Menu menu = sync.menuForMenuKind(MenuKind::ContextualItems);
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
    std::string favourite = work.mkdir("fav");
    for (const char* name : {"a", "b", "c"})
        work.write(std::string("fav/") + name);
    auto items = [&] { return PXHelper::commomPathNextMenuWithPath(favourite); };
    EXPECT_EQ(items().size(), 4u);
    EXPECT_EQ(items().front()->key, "Show in Finder");
    suite->setInteger(menukey::kCommonPathNextMenu, 0);
    EXPECT_TRUE(items().empty());
    suite->setInteger(menukey::kCommonPathNextMenu, 2);
    EXPECT_EQ(items().front()->key, "Show in Finder");
    EXPECT_GT(items().size(), 1u);
    for (int i = 0; i < 30; ++i)
        work.write("fav/f" + std::to_string(i));
    suite->setInteger(menukey::kCommonPathNextMenu, 4);
    auto mixed = items();
    EXPECT_EQ(mixed[11]->key, "More Files");
    EXPECT_TRUE(mixed[12]->isSepLine());
    suite->setInteger(menukey::kCommonPathNextMenu, 3);
    EXPECT_EQ(items().size(), 22u);
}

TEST(MenuTag, PiecesPadOddLengths) {
    EXPECT_EQ(menutag::pieces(1003), (std::vector<std::string>{"10", "03"}));
    EXPECT_EQ(menutag::pieces(2), (std::vector<std::string>{"02"}));
    EXPECT_EQ(menutag::pieces(30211), (std::vector<std::string>{"03", "02", "11"}));
    EXPECT_EQ(
        menutag::toTag(menutag::childText(menutag::childText(menutag::topLevelText(3), 1), 10)),
        30211);
}

} // namespace
