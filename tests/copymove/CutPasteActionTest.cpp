#include "CopyMoveFixture.h"

#include <gmock/gmock.h>

using namespace px;
using namespace px::test;
using ::testing::ElementsAre;

namespace {

class CutPasteActionTest : public CopyMoveFixture {
  protected:
    // The "Cut Paste" entry as the configuration holds it.
    PXMenuItem::Ptr storedItem() {
        for (const auto& item : store->menuItemArray())
            if (item->isCutPaste()) return item;
        return PXMenuItem::create("(no Cut Paste entry)");
    }
    std::vector<std::string> storedCutPaths() { return storedItem()->cutPaths; }
    // The entry as the menu shows it for the state prepared; nothing when it is not offered.
    const MenuEntry* offered(MenuKind kind) {
        menu = sync.menuForMenuKind(kind);
        return find(menu, "Cut Paste");
    }
    bool cut(std::vector<std::string> items) {
        prepare(std::move(items), work / "src");
        const MenuEntry* entry = offered(MenuKind::ContextualItems);
        if (!entry || entry->title != localized("Cut")) return false;
        sync.onMenuItemAction(entry->tag);
        return true;
    }
    bool pasteInto(const std::string& folder) {
        prepare({}, folder);
        const MenuEntry* entry = offered(MenuKind::ContextualContainer);
        if (!entry || entry->title != localized("Paste")) return false;
        sync.onMenuItemAction(entry->tag);
        return true;
    }
    Menu menu;
};

// A new cut replaces the list and touches nothing on disk; paste moves folders whole, asks on
// each collision, and forgets the list even when one item was stopped.
TEST_F(CutPasteActionTest, CutThenPasteMovesEverythingAsksOnCollisionsAndForgets) {
    const std::string a = work.write("src/a", "new a"), b = work.write("src/b", "new b");
    const std::string c = work.write("src/c \"$(x)\"", "new c");
    const std::string folder = work.mkdir("src/folder");
    work.write("src/folder/inner", "i");
    for (const char* name : {"a", "b", "c \"$(x)\""})
        work.write(std::string("dest/") + name, std::string("old ") + name);
    ASSERT_TRUE(cut({work.write("src/earlier")}));
    ASSERT_TRUE(cut({a, b, c, folder}));
    EXPECT_EQ(storedCutPaths(), (std::vector<std::string>{a, b, c, folder}));
    EXPECT_TRUE(exists(a));

    ui->answers({"button 1000", "button 1001", "button 1002"});
    ASSERT_TRUE(pasteInto(work / "dest"));
    EXPECT_EQ(alertTexts(*ui), collisionTips({"a", "b", "c \"$(x)\""}));
    EXPECT_EQ(readFile(work / "dest/a-1"), "new a");
    EXPECT_EQ(readFile(work / "dest/a"), "old a");
    EXPECT_EQ(readFile(work / "dest/b"), "old b");
    EXPECT_EQ(readFile(work / "dest/c \"$(x)\""), "new c");
    EXPECT_EQ(readFile(work / "dest/folder/inner"), "i");
    EXPECT_THAT(listing(work / "src"), ElementsAre("b", "earlier"));
    EXPECT_TRUE(storedCutPaths().empty());
    EXPECT_EQ(offered(MenuKind::ContextualContainer), nullptr);
}

TEST_F(CutPasteActionTest, PastingIntoTheFolderTheItemsCameFromIsNeitherOfferedNorDone) {
    const std::string a = work.write("src/a", "a");
    ASSERT_TRUE(cut({a}));
    EXPECT_FALSE(pasteInto(work / "src"));

    // Reached anyway (an older menu): refused with a message, the list kept for another folder.
    prepare({}, work / "src");
    auto item = PXMenuItem::create("Cut Paste");
    item->cutPaths = {a};
    commands::cutPaste(sync.cx(), *item);
    ASSERT_EQ(ui->alerts().size(), 1u);
    EXPECT_EQ(ui->alerts()[0].informative, localized("Paste Same Folder Tip"));
    EXPECT_EQ(readFile(a), "a");
    EXPECT_EQ(storedCutPaths(), std::vector<std::string>{a});
}

TEST_F(CutPasteActionTest, PastingOverASelectedFileOutsideTheContextMenuUsesItsFolder) {
    const std::string a = work.write("src/a", "a");
    const std::string file = work.write("dest/file", "f");
    ASSERT_TRUE(cut({a}));
    prepare({file}, work / "dest");
    sync.setKind(MenuKind::Toolbar); // a toolbar menu
    commands::cutPaste(sync.cx(), *storedItem());
    EXPECT_EQ(readFile(work / "dest/a"), "a");
    EXPECT_EQ(readFile(file), "f");
    EXPECT_TRUE(storedCutPaths().empty());
}

} // namespace
