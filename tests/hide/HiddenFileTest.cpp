#include "actions/HiddenFile.h"

#include "support_files/TestSupport.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace px;
using namespace px::test;

namespace {

using Names = std::vector<std::string>;

TEST(HiddenFileText, AddingAppendsOnlyNewNamesAndKeepsEveryOtherLine) {
    const std::string edited = "# kept by hand\n\nnotes.txt\r\nold\n";
    EXPECT_EQ(hiddenfile::withNamesAdded(edited, {"a", "old", "a", "b"}), edited + "a\nb\n");
    EXPECT_EQ(hiddenfile::withNamesAdded("old", {"new"}), "old\nnew\n");
    EXPECT_EQ(hiddenfile::withNamesAdded("", {"x"}), "x\n");
    // "notes.txt\r" is another name than "notes.txt": the file managers compare whole lines.
    EXPECT_EQ(hiddenfile::withNamesAdded("notes.txt\r\n", {"notes.txt"}),
              "notes.txt\r\nnotes.txt\n");
}

TEST(HiddenFileText, NamesThatCannotBeOneLineAreNeverWritten) {
    for (std::string name : {"two\nlines", "", ".", "..", "a/b"})
        EXPECT_FALSE(hiddenfile::canList(name)) << name;
    for (std::string name : {".dot", "space name", "$(reboot)", "a\"; rm x", "tab\there", "ünï"})
        EXPECT_TRUE(hiddenfile::canList(name)) << name;
    EXPECT_EQ(hiddenfile::withNamesAdded("a\n", {"two\nlines", "", "b"}), "a\nb\n");
    // Removing "two\nlines" must not take "two" and "lines" off the list.
    EXPECT_EQ(hiddenfile::withNamesRemoved("two\nlines\n", {"two\nlines"}), "two\nlines\n");
}

TEST(HiddenFileText, RemovingTakesEveryCopyOfTheNameAndNothingElse) {
    EXPECT_EQ(hiddenfile::withNamesRemoved("# c\na\n\nb\na\nab\n", {"a"}), "# c\n\nb\nab\n");
    EXPECT_EQ(hiddenfile::withNamesRemoved("a\nb", {"b"}), "a\n");
    EXPECT_EQ(hiddenfile::withNamesRemoved("a\nb", {"a"}), "b");
    EXPECT_EQ(hiddenfile::withNamesRemoved("a\n", {"missing"}), "a\n");
    EXPECT_TRUE(hiddenfile::isBlank("\n \n\t\n"));
    EXPECT_FALSE(hiddenfile::isBlank("\n#\n"));
}

class HiddenFileTest : public ::testing::Test {
  protected:
    std::string list() const { return readFile(folder / ".hidden"); }
    bool listExists() const { return exists(folder / ".hidden"); }
    TempDir folder;
};

TEST_F(HiddenFileTest, HideCreatesTheFileAndUnhideRemovesItWhenNothingIsLeft) {
    ASSERT_FALSE(hiddenfile::hide(folder.path(), {"a", "b"}).isError());
    EXPECT_EQ(list(), "a\nb\n");
    EXPECT_EQ(hiddenfile::listedNames(folder.path()), (Names{"a", "b"}));
    ASSERT_FALSE(hiddenfile::unhide(folder.path(), {"a"}).isError());
    EXPECT_EQ(list(), "b\n");
    ASSERT_FALSE(hiddenfile::unhide(folder.path(), {"b"}).isError());
    EXPECT_FALSE(listExists());
    EXPECT_TRUE(hiddenfile::listedNames(folder.path()).empty());
}

TEST_F(HiddenFileTest, HandEditedFileKeepsItsLinesModeAndOrder) {
    folder.write(".hidden", "# my list\n\nz\nb\n");
    ::chmod((folder / ".hidden").c_str(), 0640);
    ASSERT_FALSE(hiddenfile::hide(folder.path(), {"b", "a"}).isError());
    EXPECT_EQ(list(), "# my list\n\nz\nb\na\n");
    ASSERT_FALSE(hiddenfile::unhide(folder.path(), {"z", "a", "b"}).isError());
    EXPECT_EQ(list(), "# my list\n\n");
    struct stat info {};
    ASSERT_EQ(::stat((folder / ".hidden").c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 07777, 0640u);
}

TEST_F(HiddenFileTest, OnlyBlankLinesLeftRemovesTheFile) {
    folder.write(".hidden", "\n  \na\n\n");
    ASSERT_FALSE(hiddenfile::unhide(folder.path(), {"a"}).isError());
    EXPECT_FALSE(listExists());
}

TEST_F(HiddenFileTest, NothingToChangeWritesNothing) {
    ASSERT_FALSE(hiddenfile::hide(folder.path(), {}).isError());
    ASSERT_FALSE(hiddenfile::hide(folder.path(), {"bad\nname"}).isError());
    ASSERT_FALSE(hiddenfile::unhide(folder.path(), {"a"}).isError());
    EXPECT_FALSE(listExists());
    folder.write(".hidden", "\n");
    ASSERT_FALSE(hiddenfile::unhide(folder.path(), {"a"}).isError());
    EXPECT_EQ(list(), "\n"); // untouched: the edit changed nothing
}

TEST_F(HiddenFileTest, AListThatCannotBeReadIsLeftAloneAndReported) {
    folder.mkdir(".hidden");
    folder.write(".hidden/inside", "x");
    auto hidden = hiddenfile::hide(folder.path(), {"a"});
    ASSERT_TRUE(hidden.isError());
    EXPECT_NE(hidden.error().message.find(".hidden"), std::string::npos);
    EXPECT_TRUE(hiddenfile::unhide(folder.path(), {"a"}).isError());
    EXPECT_EQ(readFile(folder / ".hidden/inside"), "x");
}

TEST_F(HiddenFileTest, AMissingFolderIsAnError) {
    EXPECT_TRUE(hiddenfile::hide(folder / "gone", {"a"}).isError());
    EXPECT_FALSE(exists(folder / "gone"));
}

} // namespace
