#include "support/AccessDescription.h"
#include "support/PathCoverage.h"
#include "support_files/TestSupport.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace px {
namespace {

TEST(GrantCoverage, FollowsFolderBoundaries) {
    using Pairs = std::vector<std::pair<std::string, std::string>>;
    for (const auto& [grant, path] :
         Pairs{{"/a/b", "/a/b"}, {"/a/b", "/a/b/c"}, {"/a/b", "/a/b/"}, {"/", "/"}, {"/", "/x/y"}})
        EXPECT_TRUE(grantCovers(grant, path)) << grant << " " << path;
    for (const auto& [grant, path] :
         Pairs{{"/a/b", "/a/bc"}, {"/a/b", "/a"}, {"/a/b/c", "/a/b"}, {"", "/a"}, {"/a/b", ""}})
        EXPECT_FALSE(grantCovers(grant, path)) << grant << " " << path;
}

TEST(AccessDescription, ListsKindPermissionsOwnerAndPathOfTheNearestExistingItem) {
    test::TempDir dir;
    std::string folder = dir.mkdir("shared");
    ::chmod(folder.c_str(), 02750);
    const std::string owner = ::getpwuid(::geteuid())->pw_name;
    EXPECT_EQ(describeAccess(folder + "/gone/deeper").rfind("drwxr-s--- " + owner + " ", 0), 0u)
        << describeAccess(folder);
    EXPECT_TRUE(describeAccess(folder + "/gone/deeper").ends_with(" " + folder));
    EXPECT_EQ(describeAccess("relative-and-missing"), "? ? ? relative-and-missing");
}

} // namespace
} // namespace px
