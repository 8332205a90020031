#include "CopyMoveFixture.h"

#include <gmock/gmock.h>

using namespace px;
using namespace px::test;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

namespace {

class CutPasteActionTest : public CopyMoveFixture {
  protected:
    // The "Cut Paste" entry as the configuration holds it.
    static PXMenuItem::Ptr storedItem() {
        for (const auto& item : PXMenuManager::menuItemArray())
            if (item->isCutPaste()) return item;
        return PXMenuItem::create("(no Cut Paste entry)");
    }
    static std::vector<std::string> storedCutPaths() { return storedItem()->cutPaths; }
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

TEST_F(CutPasteActionTest, CutRemembersThePathsAndPasteMovesThemAndForgets) {
    const std::string a = work.write("src/a \"$(x)\".txt", "a");
    const std::string folder = work.mkdir("src/folder");
    work.write("src/folder/inner", "i");
    work.mkdir("dest");
    ASSERT_TRUE(cut({a, folder}));
    EXPECT_EQ(storedCutPaths(), (std::vector<std::string>{a, folder}));
    EXPECT_TRUE(exists(a)); // nothing happens on disk at cut time

    ASSERT_TRUE(pasteInto(work / "dest"));
    EXPECT_EQ(readFile(work / "dest/a \"$(x)\".txt"), "a");
    EXPECT_EQ(readFile(work / "dest/folder/inner"), "i");
    EXPECT_FALSE(exists(a));
    EXPECT_FALSE(exists(folder));
    EXPECT_TRUE(storedCutPaths().empty());
    EXPECT_TRUE(ui->alerts().empty());
    EXPECT_TRUE(ui->progress().empty()); // paste runs at once, without the progress window
    EXPECT_EQ(offered(MenuKind::ContextualContainer), nullptr);
}

TEST_F(CutPasteActionTest, ANewCutReplacesTheList) {
    const std::string a = work.write("src/a"), b = work.write("src/b");
    ASSERT_TRUE(cut({a}));
    ASSERT_TRUE(cut({b}));
    EXPECT_EQ(storedCutPaths(), std::vector<std::string>{b});
}

TEST_F(CutPasteActionTest, AnItemDeletedBeforeThePasteIsReportedAndTheListStillClears) {
    const std::string a = work.write("src/a", "a"), b = work.write("src/b", "b");
    work.mkdir("dest");
    ASSERT_TRUE(cut({a, b}));
    ::unlink(a.c_str());
    ASSERT_TRUE(pasteInto(work / "dest"));
    EXPECT_THAT(listing(work / "dest"), ElementsAre("b"));
    ASSERT_EQ(ui->alerts().size(), 1u);
    EXPECT_THAT(ui->alerts()[0].informative, HasSubstr(a));
    EXPECT_THAT(ui->alerts()[0].informative, HasSubstr("No such file or directory"));
    EXPECT_TRUE(storedCutPaths().empty());
}

TEST_F(CutPasteActionTest, CollisionsAskAndStopStillClearsTheList) {
    const std::string a = work.write("src/a", "new a"), b = work.write("src/b", "new b");
    const std::string c = work.write("src/c", "new c");
    for (const char* name : {"a", "b", "c"})
        work.write(std::string("dest/") + name, std::string("old ") + name);
    ASSERT_TRUE(cut({a, b, c}));
    ui->answers({"button 1000", "button 1001", "button 1002"});
    ASSERT_TRUE(pasteInto(work / "dest"));
    EXPECT_THAT(informativeTexts(),
                ElementsAre(collisionTip("a"), collisionTip("b"), collisionTip("c")));
    EXPECT_EQ(readFile(work / "dest/a-1"), "new a");
    EXPECT_EQ(readFile(work / "dest/a"), "old a");
    EXPECT_EQ(readFile(work / "dest/b"), "old b");
    EXPECT_EQ(readFile(work / "dest/c"), "new c");
    EXPECT_THAT(listing(work / "src"), ElementsAre("b"));
    EXPECT_TRUE(storedCutPaths().empty());
}

TEST_F(CutPasteActionTest, PastingIntoTheFolderTheItemsCameFromIsNeitherOfferedNorDone) {
    const std::string a = work.write("src/a", "a");
    ASSERT_TRUE(cut({a}));
    EXPECT_FALSE(pasteInto(work / "src"));

    // Reached anyway (an older menu): refused with a message, the list kept for another folder.
    prepare({}, work / "src");
    auto item = PXMenuItem::create("Cut Paste");
    item->cutPaths = {a};
    sync.cutPasteItem(item);
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
    sync.isSelectURL = false; // a toolbar menu
    sync.cutPasteItem(storedItem());
    EXPECT_EQ(readFile(work / "dest/a"), "a");
    EXPECT_EQ(readFile(file), "f");
    EXPECT_TRUE(storedCutPaths().empty());
}

TEST_F(CutPasteActionTest, WithNothingSelectedTheFolderShownIsCut) {
    const std::string folder = work.mkdir("src/shown");
    prepare({}, folder);
    sync.cutPasteItem(PXMenuItem::create("Cut Paste"));
    EXPECT_EQ(storedCutPaths(), std::vector<std::string>{folder});
}

} // namespace
