#include "extension/UserTemplates.h"

#include "NewFileFixture.h"

#include <fmt/format.h>
#include <fstream>

using namespace px;
using namespace px::test;

namespace {

class UserTemplatesTest : public NewFileFixture {
  protected:
    std::string templates() const { return xdg.home() + "/Templates"; }
    static std::vector<std::string> keysOf(const PXMenuItem::List& items) {
        std::vector<std::string> keys;
        for (const auto& item : items)
            keys.push_back(item->key);
        return keys;
    }
};

TEST_F(UserTemplatesTest, VisibleFilesSortedByNameWithTheirParts) {
    TempDir folder;
    folder.write("b.odt", "B");
    folder.write("Letter.v2.docx", "L");
    folder.write("Makefile", "all:");
    folder.write(".hidden.txt", "h");
    folder.write("old.txt~", "o");
    folder.write("sub/inner.txt", "i");
    folder.write("New File From Window", "clash");
    std::filesystem::create_symlink(folder / "b.odt", folder / "link.odt");
    std::filesystem::create_symlink(folder / "sub", folder / "linkdir");
    std::filesystem::create_symlink(folder / "nowhere", folder / "dangling.txt");

    auto items = UserTemplates::items(folder.path());
    EXPECT_EQ(keysOf(items),
              (std::vector<std::string>{"Letter.v2.docx", "Makefile", "b.odt", "link.odt"}));
    const auto& letter = *items.front();
    EXPECT_EQ(letter.ext, "docx");
    EXPECT_EQ(letter.displayName, "Letter.v2");
    EXPECT_EQ(letter.fileName, "Letter.v2");
    EXPECT_EQ(letter.templatePath, folder / "Letter.v2.docx");
    EXPECT_EQ(items[1]->ext, "");
    EXPECT_TRUE(UserTemplates::items(folder / "missing").empty());
}

TEST_F(UserTemplatesTest, AtMostFiftyAndNoneWhenTheFolderIsHome) {
    TempDir folder;
    for (int i = 0; i < 70; ++i)
        folder.write(fmt::format("t{:02}.txt", i));
    auto items = UserTemplates::items(folder.path());
    ASSERT_EQ(items.size(), UserTemplates::kMaxItems);
    EXPECT_EQ(items.back()->key, "t49.txt");

    EXPECT_EQ(UserTemplates::folder(), templates());
    std::filesystem::create_directories(xdg.configHome());
    std::ofstream(xdg.configHome() + "/user-dirs.dirs") << "XDG_TEMPLATES_DIR=\"$HOME/\"\n";
    EXPECT_EQ(UserTemplates::folder(), "");
}

TEST_F(UserTemplatesTest, TheyFollowTheFactoryTemplatesInTheMenuAndMakeCopies) {
    std::filesystem::create_directories(templates());
    std::ofstream(templates() + "/Invoice.ods") << "ods bytes";
    std::ofstream(templates() + "/notes") << "plain";
    controller->setSelection({});
    controller->setTarget(work.path());
    FinderSync sync;
    Menu menu = sync.menuForMenuKind(MenuKind::ContextualContainer);
    const MenuEntry* newFile = nullptr;
    for (const auto& entry : menu)
        if (entry.key == "New File") newFile = &entry;
    ASSERT_TRUE(newFile);
    std::vector<std::string> keys;
    for (const auto& child : newFile->children)
        keys.push_back(child.key);
    const auto factory = PXMenuManager::newFileTemplateMenuArray(false).size();
    ASSERT_EQ(keys.size(), factory + 3);
    EXPECT_EQ(keys[factory], "Invoice.ods");
    EXPECT_EQ(keys[factory + 1], "notes");
    EXPECT_EQ(keys.back(), "Go Set");

    sync.onMenuItemAction(newFile->children[factory].tag);
    sync.menuForMenuKind(MenuKind::ContextualContainer);
    sync.onMenuItemAction(newFile->children[factory + 1].tag);
    queue::runUntilIdle();
    EXPECT_EQ(names(work.path()), (std::vector<std::string>{"Invoice.ods", "notes"}));
    EXPECT_EQ(readFile(work / "Invoice.ods"), "ods bytes");
    EXPECT_EQ(readFile(work / "notes"), "plain");
}

} // namespace
