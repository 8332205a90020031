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

// Entries move up beside the folder under free names (also one named like the folder itself),
// nested folders whole; hidden entries go with the folder.
TEST_F(UnembedActionsTest, EntriesMoveUpUnderFreeNamesAndHiddenOnesGoWithTheFolder) {
    std::string box = work.mkdir("a \"$(touch pwned)\" box");
    work.write("a \"$(touch pwned)\" box/a \"$(touch pwned)\" box", "same name");
    work.write("a \"$(touch pwned)\" box/sub/deep", "deep");
    work.write("a \"$(touch pwned)\" box/.secret", "hidden");
    ASSERT_TRUE(unembed({box}));
    EXPECT_EQ(readFile(work / "sub/deep"), "deep");
    EXPECT_EQ(readFile(box + "-1"), "same name");
    EXPECT_EQ(entries(work.path()), (Names{"a \"$(touch pwned)\" box-1", "sub"}));
    EXPECT_TRUE(ui->alerts().empty());
}

// Folders with nothing visible stay with a tip each; files and vanished folders are passed over;
// the next folder is still dissolved.
TEST_F(UnembedActionsTest, FoldersWithoutVisibleEntriesAreKeptWithATipAndTheNextStillGoes) {
    std::string empty = work.mkdir("empty"), dotted = work.mkdir("dotted");
    work.write("dotted/.keep", "k");
    std::string gone = work.mkdir("gone");
    work.write("gone/a");
    std::string full = work.mkdir("full");
    work.write("full/f", "f");
    std::string plainFile = work.write("plain", "p");
    ASSERT_TRUE(unembed({empty, plainFile, gone, dotted, full},
                        [&] { std::filesystem::remove_all(gone); }));
    EXPECT_EQ(alertTexts(*ui),
              (Names{localized("Empty Folder Tip"), localized("Empty Folder Tip")}));
    EXPECT_TRUE(exists(empty));
    EXPECT_EQ(readFile(dotted + "/.keep"), "k");
    EXPECT_EQ(readFile(work / "f"), "f");
    EXPECT_FALSE(exists(full) || exists(gone) || exists(work / "a"));
    EXPECT_EQ(readFile(plainFile), "p");
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
    EXPECT_EQ(alertTexts(*ui), Names{localized("Error Common Tip")});
    EXPECT_EQ(readFile(work / "a"), "a"); // moved before the failure
    EXPECT_EQ(readFile(work / longest), "outer");
    EXPECT_EQ(entries(first), (Names{".h", longest}));
    EXPECT_EQ(entries(second), Names{"b"});
}

TEST_F(UnembedActionsTest, TheHomeFolderIsNeverDissolved) {
    std::string home = xdg.home();
    std::string visible = home + "/visible";
    std::filesystem::create_directories(visible);
    for (const std::string& folder : {home, home + "/", home + "/visible/.."}) {
        select({folder}, home);
        commands::unembedFolder(sync.cx());
    }
    EXPECT_TRUE(exists(visible));
    EXPECT_EQ(alertTexts(*ui), (Names(3, localized("Error Common Tip"))));
}

} // namespace
