#include "actions/HiddenFile.h"

#include "support_files/TestSupport.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace px;
using namespace px::test;

namespace {

using Names = std::vector<std::string>;

TEST(HiddenFileText, EditsChangeOnlyTheNamedLines) {
    struct Case {
        std::string before;
        Names added, removed;
        std::string after;
    };
    const std::string edited = "# kept by hand\n\nnotes.txt\r\nold\n";
    const std::vector<Case> cases{
        {edited, {"a", "old", "a", "b"}, {}, edited + "a\nb\n"},
        {"old", {"new"}, {}, "old\nnew\n"},
        // "notes.txt\r" is another name than "notes.txt": the file managers compare whole lines.
        {"notes.txt\r\n", {"notes.txt"}, {}, "notes.txt\r\nnotes.txt\n"},
        {"a\n", {"two\nlines", "", ".", "..", "a/b", "b"}, {}, "a\nb\n"},
        {"# c\na\n\nb\na\nab\n", {}, {"a"}, "# c\n\nb\nab\n"},
        {"a\nb", {}, {"b"}, "a\n"},
        {"a\nb", {}, {"a"}, "b"},
        // Removing "two\nlines" must not take "two" and "lines" off the list.
        {"two\nlines\n", {}, {"two\nlines"}, "two\nlines\n"},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.before);
        const std::string text = test.added.empty()
                                     ? hiddenfile::withNamesRemoved(test.before, test.removed)
                                     : hiddenfile::withNamesAdded(test.before, test.added);
        EXPECT_EQ(text, test.after);
    }
}

class HiddenFileTest : public ::testing::Test {
  protected:
    std::string list() const { return readFile(folder / ".hidden"); }
    TempDir folder;
};

TEST_F(HiddenFileTest, AHandEditedFileKeepsItsLinesOrderAndMode) {
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

TEST_F(HiddenFileTest, NothingToChangeWritesNothing) {
    ASSERT_FALSE(hiddenfile::hide(folder.path(), {}).isError());
    ASSERT_FALSE(hiddenfile::hide(folder.path(), {"bad\nname"}).isError());
    ASSERT_FALSE(hiddenfile::unhide(folder.path(), {"a"}).isError());
    EXPECT_FALSE(exists(folder / ".hidden"));
    folder.write(".hidden", "\n");
    ASSERT_FALSE(hiddenfile::unhide(folder.path(), {"a"}).isError());
    EXPECT_EQ(list(), "\n");
    // Only blank lines left after a change: the file goes.
    folder.write(".hidden", "\n  \nb\n\n");
    ASSERT_FALSE(hiddenfile::unhide(folder.path(), {"b"}).isError());
    EXPECT_FALSE(exists(folder / ".hidden"));
}

TEST_F(HiddenFileTest, AListThatCannotBeReadOrAMissingFolderIsReportedAndLeftAlone) {
    folder.write(".hidden/inside", "x");
    auto hidden = hiddenfile::hide(folder.path(), {"a"});
    ASSERT_TRUE(hidden.isError());
    EXPECT_NE(hidden.error().message.find(".hidden"), std::string::npos);
    EXPECT_TRUE(hiddenfile::unhide(folder.path(), {"a"}).isError());
    EXPECT_EQ(readFile(folder / ".hidden/inside"), "x");
    EXPECT_TRUE(hiddenfile::hide(folder / "gone", {"a"}).isError());
    EXPECT_FALSE(exists(folder / "gone"));
}

} // namespace
