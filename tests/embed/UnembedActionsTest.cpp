#include "EmbedFixture.h"

#include <algorithm>
#include <filesystem>

using namespace px;
using namespace px::test;

namespace {

using Names = std::vector<std::string>;

class UnembedActionsTest : public EmbedFixture {
  protected:
    bool unembed(Names paths, const std::function<void()>& beforeChoosing = {}) {
        return choose(std::move(paths), "Unembed Folder", beforeChoosing);
    }
    Names entries(const std::string& folder) const {
        Names names = filehash::folderEntries(folder);
        std::sort(names.begin(), names.end());
        return names;
    }
};

TEST_F(UnembedActionsTest, EntriesMoveUpUnderFreeNamesAndHiddenOnesGoWithTheFolder) {
    work.write("x.txt", "outer");
    std::string box = work.mkdir("box");
    work.write("box/x.txt", "inner");
    work.write("box/sub/deep", "deep");
    work.write("box/.secret", "hidden");
    ASSERT_TRUE(unembed({box}));
    EXPECT_EQ(readFile(work / "x.txt"), "outer");
    EXPECT_EQ(readFile(work / "x-1.txt"), "inner");
    EXPECT_EQ(readFile(work / "sub/deep"), "deep");
    EXPECT_FALSE(exists(box));
    EXPECT_EQ(entries(work.path()), (Names{"sub", "x-1.txt", "x.txt"}));
    EXPECT_TRUE(ui->alerts().empty());
}

TEST_F(UnembedActionsTest, AnEntryNamedLikeItsFolderTakesTheNextFreeName) {
    std::string box = work.mkdir("box");
    work.write("box/box", "same name");
    ASSERT_TRUE(unembed({box}));
    EXPECT_EQ(readFile(work / "box-1"), "same name");
    EXPECT_FALSE(exists(box));
}

TEST_F(UnembedActionsTest, FoldersWithoutVisibleEntriesAreKeptWithATipAndTheNextStillGoes) {
    std::string empty = work.mkdir("empty");
    std::string dotted = work.mkdir("dotted");
    work.write("dotted/.keep", "k");
    std::string full = work.mkdir("full");
    work.write("full/f", "f");
    std::string plainFile = work.write("plain", "p");
    ASSERT_TRUE(unembed({empty, plainFile, dotted, full}));
    EXPECT_EQ(alertTexts(), (Names{localized("Empty Folder Tip"), localized("Empty Folder Tip")}));
    EXPECT_TRUE(exists(empty));
    EXPECT_EQ(readFile(dotted + "/.keep"), "k");
    EXPECT_EQ(readFile(work / "f"), "f");
    EXPECT_FALSE(exists(full));
    EXPECT_EQ(readFile(plainFile), "p");
}

TEST_F(UnembedActionsTest, AVanishedFolderIsPassedOver) {
    std::string gone = work.mkdir("gone");
    work.write("gone/a");
    std::string kept = work.mkdir("kept");
    work.write("kept/b", "b");
    ASSERT_TRUE(unembed({gone, kept}, [&] { std::filesystem::remove_all(gone); }));
    EXPECT_EQ(readFile(work / "b"), "b");
    EXPECT_FALSE(exists(kept));
    EXPECT_TRUE(ui->alerts().empty());
}

TEST_F(UnembedActionsTest, AFailedMoveEndsTheActionAndLeavesEachItemWhereItIs) {
    // A name of the longest length taken beside the folder: its free name would be too long.
    const std::string longest(255, 'n');
    work.write(longest, "outer");
    std::string first = work.mkdir("first");
    work.write("first/a", "a");
    work.write("first/" + longest, "inner");
    work.write("first/.h", "h");
    std::string second = work.mkdir("second");
    work.write("second/b", "b");
    ASSERT_TRUE(unembed({first, second}));
    EXPECT_EQ(alertTexts(), Names{localized("Error Common Tip")});
    EXPECT_EQ(readFile(work / "a"), "a"); // moved before the failure
    EXPECT_EQ(readFile(work / longest), "outer");
    EXPECT_EQ(entries(first), (Names{".h", longest}));
    EXPECT_EQ(entries(second), Names{"b"});
}

TEST_F(UnembedActionsTest, NamesWithQuotesAndCommandTextMoveAsTheyAre) {
    std::string box = work.mkdir("a \"$(touch pwned)\" box");
    work.write("a \"$(touch pwned)\" box/it's `id`.txt", "odd");
    ASSERT_TRUE(unembed({box}));
    EXPECT_EQ(readFile(work / "it's `id`.txt"), "odd");
    EXPECT_FALSE(exists(box));
    EXPECT_FALSE(exists(work / "pwned"));
}

TEST_F(UnembedActionsTest, TheHomeFolderIsNeverDissolved) {
    std::string home = xdg.home();
    std::string visible = home + "/visible";
    std::filesystem::create_directories(visible);
    for (const std::string& folder : {home, home + "/", home + "/visible/.."}) {
        select({folder}, home);
        sync.unembedFolder();
    }
    EXPECT_TRUE(exists(visible));
    EXPECT_EQ(alertTexts(), (Names(3, localized("Error Common Tip"))));
}

} // namespace
