#include "actions/ItemTransfer.h"

#include "TreeSnapshot.h"
#include "support_files/TestSupport.h"

#include <cerrno>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace px;
using namespace px::test;
using transfer::Existing;

namespace {

class ItemTransferTest : public ::testing::Test {
  protected:
    // Names in the work folder other than the test's own: temporaries left behind show up here.
    std::vector<std::string> leftovers(const std::string& folder) {
        std::vector<std::string> hidden;
        for (const auto& name : listing(folder))
            if (name.starts_with(".pxmenu-tmp-")) hidden.push_back(name);
        return hidden;
    }
    TempDir work;
};

// Keep refuses a taken name; Replace swaps files and folders either way, leaving no temporaries.
TEST_F(ItemTransferTest, ReplaceSwapsAnyKindOfItemAndKeepLeavesTheTargetAlone) {
    work.write("a/item/inside", "folder");
    work.write("b/item", "file");
    work.write("c/item/deep/x", "old folder");
    ::chmod((work / "c/item/deep").c_str(), 0555);
    auto kept = transfer::copyItem(work / "a/item", work / "b/item", Existing::Keep);
    ASSERT_FALSE(kept);
    EXPECT_EQ(kept.error().code, EEXIST);
    EXPECT_EQ(readFile(work / "b/item"), "file");

    ASSERT_TRUE(transfer::copyItem(work / "a/item", work / "b/item", Existing::Replace));
    EXPECT_EQ(readFile(work / "b/item/inside"), "folder");
    ASSERT_TRUE(transfer::moveItem(work / "a/item/inside", work / "c/item", Existing::Replace));
    EXPECT_EQ(readFile(work / "c/item"), "folder");
    EXPECT_FALSE(exists(work / "a/item/inside"));
    EXPECT_TRUE(leftovers(work / "b").empty());
    EXPECT_TRUE(leftovers(work / "c").empty());
}

TEST_F(ItemTransferTest, TheSourceItselfIsNeverReplaced) {
    const std::string file = work.write("box/file", "mine");
    ::link(file.c_str(), (work / "box/hard").c_str());
    ::symlink(work.path().c_str(), (work / "via").c_str());
    for (const std::string& target : {file, work / "box/hard", work / "via/box/file"}) {
        SCOPED_TRACE(target);
        EXPECT_TRUE(transfer::replacesSource(file, target));
        EXPECT_FALSE(transfer::copyItem(file, target, Existing::Replace));
        EXPECT_FALSE(transfer::moveItem(file, target, Existing::Replace));
        EXPECT_EQ(readFile(file), "mine");
    }
    // A folder that holds the source: replacing it would take the source along.
    work.write("outer/outer", "inner");
    EXPECT_TRUE(transfer::replacesSource(work / "outer/outer", work / "outer"));
    EXPECT_FALSE(transfer::moveItem(work / "outer/outer", work / "outer", Existing::Replace));
    EXPECT_EQ(readFile(work / "outer/outer"), "inner");
    EXPECT_FALSE(transfer::replacesSource(file, work / "box/other"));
}

TEST_F(ItemTransferTest, AFolderGoesNeitherIntoItselfNorBelowItself) {
    work.write("tree/sub/f", "f");
    const TreeState before = snapshot(work / "tree");
    for (auto* move : {&transfer::copyItem, &transfer::moveItem}) {
        auto refused = (*move)(work / "tree", work / "tree/sub/tree", Existing::Keep);
        ASSERT_FALSE(refused);
        EXPECT_NE(refused.error().message.find("into itself"), std::string::npos);
    }
    EXPECT_EQ(snapshot(work / "tree"), before);
}

// /dev/shm is a tmpfs, another file system than the temporary folder's in most setups.
class CrossFileSystemTest : public ItemTransferTest {
  protected:
    void SetUp() override {
        struct stat shm {
        }, tmp{};
        if (::stat("/dev/shm", &shm) != 0 || ::access("/dev/shm", W_OK) != 0 ||
            ::stat(work.path().c_str(), &tmp) != 0 || shm.st_dev == tmp.st_dev)
            GTEST_SKIP() << "no second file system to move across";
        char pattern[] = "/dev/shm/px-copymove-XXXXXX";
        ASSERT_NE(::mkdtemp(pattern), nullptr);
        other = pattern;
    }
    void TearDown() override {
        if (!other.empty()) std::filesystem::remove_all(other);
    }
    std::string other;
};

TEST_F(CrossFileSystemTest, AMoveCopiesEverythingThenRemovesTheSource) {
    work.write("tree/a", "a");
    work.write("tree/sub/b", "b");
    ::symlink("a", (work / "tree/link").c_str());
    setTimes(work / "tree/sub/b", 5, 1234567890123456789LL);
    const TreeState before = snapshot(work / "tree");
    ASSERT_TRUE(transfer::moveItem(work / "tree", other + "/tree", Existing::Keep));
    EXPECT_EQ(snapshot(other + "/tree"), before);
    EXPECT_FALSE(exists(work / "tree"));
    ASSERT_TRUE(transfer::moveItem(other + "/tree/sub/b", work / "b", Existing::Keep));
    EXPECT_EQ(readFile(work / "b"), "b");
}

TEST_F(CrossFileSystemTest, AMoveFailingHalfWayKeepsTheSourceAndLeavesNoTarget) {
    work.write("tree/a", "a");
    work.write("tree/m-large", std::string(2 * 1024 * 1024, 'm'));
    work.write("tree/z", "z");
    const TreeState before = snapshot(work / "tree");
    const int status = inChildWithFileSizeLimit(512 * 1024, [&] {
        auto moved = transfer::moveItem(work / "tree", other + "/tree", Existing::Keep);
        return moved ? 0 : moved.error().code;
    });
    EXPECT_EQ(status, EFBIG);
    EXPECT_EQ(snapshot(work / "tree"), before);
    EXPECT_TRUE(listing(other).empty());
}

} // namespace
