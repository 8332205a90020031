#include "support/AccessDescription.h"
#include "support/PathCoverage.h"
#include "support/ResolvedPath.h"
#include "support_files/TestSupport.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace px {
namespace {

TEST(GrantCoverage, FollowsFolderBoundaries) {
    EXPECT_TRUE(grantCovers("/a/b", "/a/b"));
    EXPECT_TRUE(grantCovers("/a/b", "/a/b/c"));
    EXPECT_TRUE(grantCovers("/a/b", "/a/b/"));
    EXPECT_FALSE(grantCovers("/a/b", "/a/bc"));
    EXPECT_FALSE(grantCovers("/a/b", "/a"));
    EXPECT_FALSE(grantCovers("/a/b/c", "/a/b"));
    EXPECT_TRUE(grantCovers("/", "/"));
    EXPECT_TRUE(grantCovers("/", "/anything/at/all"));
    EXPECT_FALSE(grantCovers("", "/a"));
    EXPECT_FALSE(grantCovers("/a/b", ""));
}

class ResolvedPathTest : public ::testing::Test {
  protected:
    void SetUp() override {
        real = std::filesystem::canonical(dir.mkdir("real/inner")).parent_path().string();
        std::filesystem::create_directory_symlink(real, dir / "link");
    }
    test::TempDir dir;
    std::string real;
};

TEST_F(ResolvedPathTest, ResolvesLinksInExistingPaths) {
    EXPECT_EQ(resolveSymbolicLinks(dir / "link"), real);
    EXPECT_EQ(resolveSymbolicLinks(dir / "link/inner/"), real + "/inner");
    EXPECT_EQ(resolveSymbolicLinks(dir / "link/inner/../inner"), real + "/inner");
    EXPECT_EQ(resolveSymbolicLinks("/"), "/");
    EXPECT_EQ(resolveSymbolicLinks(""), "");
}

TEST_F(ResolvedPathTest, ResolvesTheExistingPartOfAMissingPath) {
    EXPECT_EQ(resolveSymbolicLinks(dir / "link/missing"), real + "/missing");
    EXPECT_EQ(resolveSymbolicLinks(dir / "link/missing/deeper/"), real + "/missing/deeper");
    EXPECT_EQ(resolveSymbolicLinks(dir / "link//missing/x/.."), real + "/missing");
    EXPECT_EQ(resolveSymbolicLinks("/no-such-top-folder/x"), "/no-such-top-folder/x");
}

TEST_F(ResolvedPathTest, SurvivesLinkLoops) {
    std::filesystem::create_symlink(dir / "loop", dir / "loop");
    std::string base = std::filesystem::canonical(dir.path()).string();
    EXPECT_EQ(resolveSymbolicLinks(dir / "loop/x"), base + "/loop/x");
}

std::string currentUserName() {
    passwd* entry = ::getpwuid(::geteuid());
    return entry ? entry->pw_name : std::to_string(::geteuid());
}

TEST(AccessDescription, ListsKindPermissionsOwnerAndPath) {
    test::TempDir dir;
    std::string folder = dir.mkdir("shared");
    std::string file = dir.write("note.txt", "x");
    ::chmod(folder.c_str(), 0750);
    std::string description = describeAccess(folder);
    EXPECT_TRUE(description.starts_with("drwxr-x--- " + currentUserName() + " ")) << description;
    EXPECT_TRUE(description.ends_with(" " + folder)) << description;

    ::chmod(folder.c_str(), 01777);
    EXPECT_TRUE(describeAccess(folder).starts_with("drwxrwxrwt ")) << describeAccess(folder);
    ::chmod(folder.c_str(), 02750);
    EXPECT_TRUE(describeAccess(folder).starts_with("drwxr-s--- ")) << describeAccess(folder);
    ::chmod(file.c_str(), 04644);
    EXPECT_TRUE(describeAccess(file).starts_with("-rwSr--r-- ")) << describeAccess(file);
}

TEST(AccessDescription, DescribesTheNearestExistingFolderOfAMissingPath) {
    test::TempDir dir;
    std::string folder = dir.mkdir("present");
    std::string description = describeAccess(folder + "/gone/deeper");
    EXPECT_TRUE(description.starts_with("d")) << description;
    EXPECT_TRUE(description.ends_with(" " + folder)) << description;
    EXPECT_EQ(describeAccess("relative-and-missing"), "? ? ? relative-and-missing");
}

} // namespace
} // namespace px
