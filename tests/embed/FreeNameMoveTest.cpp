#include "actions/FreeNameMove.h"

#include "support_files/TestSupport.h"

#include <gtest/gtest.h>
#include <unistd.h>

using namespace px;
using namespace px::test;

namespace {

TEST(FreeNameMoveTest, ATakenTargetIsNeverReplacedAndTheExtensionKeepsItsCase) {
    TempDir dir;
    dir.write("out/r.PDF", "old");
    dir.write("out/r-1.PDF", "older");
    dir.mkdir("out/folder");
    dir.write("out/folder/inside", "kept");
    auto landed = moveToFreeName(dir.write("r.PDF", "new"), dir / "out/r.PDF");
    ASSERT_FALSE(landed.isError());
    EXPECT_EQ(landed.value(), dir / "out/r-2.PDF");
    EXPECT_EQ(readFile(dir / "out/r.PDF"), "old");
    EXPECT_EQ(readFile(dir / "out/r-1.PDF"), "older");
    EXPECT_EQ(readFile(dir / "out/r-2.PDF"), "new");

    // A folder over an empty or full folder, and a file over a dangling link: all kept.
    std::string emptyTarget = dir.mkdir("out/empty");
    auto folderMove = moveToFreeName(dir.mkdir("src/folder"), dir / "out/folder");
    EXPECT_EQ(folderMove.value(), dir / "out/folder-1");
    EXPECT_EQ(readFile(dir / "out/folder/inside"), "kept");
    EXPECT_EQ(moveToFreeName(dir.mkdir("src/empty"), emptyTarget).value(), dir / "out/empty-1");
    ASSERT_EQ(::symlink("nowhere", (dir / "out/link").c_str()), 0);
    EXPECT_EQ(moveToFreeName(dir.write("link", "l"), dir / "out/link").value(), dir / "out/link-1");
}

} // namespace
