#include "support/AccessDescription.h"
#include "support_files/TestSupport.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace px {
namespace {

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
