#include "actions/PermissionLock.h"

#include "actions/FileHash.h"
#include "actions/ModeAttribute.h"
#include "support_files/TestSupport.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>

using namespace px;
using namespace px::test;

namespace {

unsigned modeOf(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 ? (info.st_mode & 07777) : 0;
}

std::string attribute(const std::string& path) {
    char buffer[64] = {};
    ssize_t size = ::getxattr(path.c_str(), modeattr::kName, buffer, sizeof buffer);
    return size < 0 ? std::string("<none>") : std::string(buffer, static_cast<std::size_t>(size));
}

TEST(ModeAttributeText, OnlyOctalModesAreRead) {
    EXPECT_EQ(modeattr::encode(0640), "0640");
    EXPECT_EQ(modeattr::encode(04755), "4755");
    EXPECT_EQ(modeattr::decode("0640"), 0640u);
    EXPECT_EQ(modeattr::decode("7777"), 07777u);
    for (std::string bad : {"", "0648", "10000", " 644", "644\n", "0x1a4", "0000000644"})
        EXPECT_EQ(modeattr::decode(bad), std::nullopt) << bad;
}

TEST(UnlockedMode, SavedWriteBitsComeBackAndTheOwnerCanAlwaysWrite) {
    EXPECT_EQ(permlock::lockedMode(0640), 0440u);
    EXPECT_EQ(permlock::lockedMode(04777), 04555u);
    EXPECT_EQ(permlock::unlockedMode(0440, 0640u), 0640u);
    EXPECT_EQ(permlock::unlockedMode(0555, 0775u), 0775u);
    // Read bits the user changed while the item was locked are not undone.
    EXPECT_EQ(permlock::unlockedMode(0400, 0644u), 0600u);
    // Without saved bits (no attribute, or a file system without user attributes).
    EXPECT_EQ(permlock::unlockedMode(0444, std::nullopt), 0644u);
    EXPECT_EQ(permlock::unlockedMode(0464, std::nullopt), 0664u);
    // Saved bits that would leave the owner unable to write still unlock.
    EXPECT_EQ(permlock::unlockedMode(0444, 0444u), 0644u);
}

class PermissionLockTest : public ::testing::Test {
  protected:
    TempDir work;
};

TEST_F(PermissionLockTest, LockingAndUnlockingRestoresTheModeExactly) {
    for (unsigned mode : {0640u, 0666u, 0700u, 0200u}) {
        std::string file = work.write("f" + std::to_string(mode), "x");
        ASSERT_EQ(::chmod(file.c_str(), mode), 0);
        ASSERT_FALSE(permlock::lock(file).isError());
        EXPECT_EQ(modeOf(file), mode & ~0222u);
        EXPECT_TRUE(filehash::isLocked(file));
        EXPECT_EQ(attribute(file), modeattr::encode(mode));
        ASSERT_FALSE(permlock::unlock(file).isError());
        EXPECT_EQ(modeOf(file), mode);
        EXPECT_FALSE(filehash::isLocked(file));
        EXPECT_EQ(attribute(file), "<none>");
    }
}

TEST_F(PermissionLockTest, FoldersLockToo) {
    std::string folder = work.mkdir("box");
    ASSERT_EQ(::chmod(folder.c_str(), 0775), 0);
    ASSERT_FALSE(permlock::lock(folder).isError());
    EXPECT_EQ(modeOf(folder), 0555u);
    ASSERT_FALSE(permlock::unlock(folder).isError());
    EXPECT_EQ(modeOf(folder), 0775u);
}

TEST_F(PermissionLockTest, LockingALockedItemKeepsTheFirstSavedMode) {
    std::string file = work.write("f", "x");
    ASSERT_EQ(::chmod(file.c_str(), 0664), 0);
    ASSERT_FALSE(permlock::lock(file).isError());
    ASSERT_FALSE(permlock::lock(file).isError());
    EXPECT_EQ(attribute(file), "0664");
    ASSERT_FALSE(permlock::unlock(file).isError());
    EXPECT_EQ(modeOf(file), 0664u);
}

TEST_F(PermissionLockTest, ItemsLockedByHandOrWithABrokenAttributeGetTheOwnerWriteBack) {
    std::string byHand = work.write("hand", "x");
    ASSERT_EQ(::chmod(byHand.c_str(), 0444), 0);
    ASSERT_FALSE(permlock::unlock(byHand).isError());
    EXPECT_EQ(modeOf(byHand), 0644u);

    std::string broken = work.write("broken", "x");
    ASSERT_EQ(::setxattr(broken.c_str(), modeattr::kName, "rw-r--r--", 9, 0), 0);
    ASSERT_EQ(::chmod(broken.c_str(), 0440), 0);
    ASSERT_FALSE(permlock::unlock(broken).isError());
    EXPECT_EQ(modeOf(broken), 0640u);
    EXPECT_EQ(attribute(broken), "<none>");
}

TEST_F(PermissionLockTest, UnlockingAnUnlockedItemKeepsItsModeAndDropsAStaleAttribute) {
    std::string file = work.write("f", "x");
    ASSERT_EQ(::chmod(file.c_str(), 0600), 0);
    ASSERT_EQ(::setxattr(file.c_str(), modeattr::kName, "0666", 4, 0), 0);
    ASSERT_FALSE(permlock::unlock(file).isError());
    EXPECT_EQ(modeOf(file), 0600u);
    EXPECT_EQ(attribute(file), "<none>");
}

// A named pipe carries no user attributes (the kernel refuses them as it does on file systems
// without them): the lock goes on without the saved bits, and unlocking falls back to giving
// the owner write permission.
TEST_F(PermissionLockTest, WithoutUserAttributesLockStillWorksAndUnlockFallsBack) {
    std::string pipe = work / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0662), 0);
    ASSERT_EQ(::chmod(pipe.c_str(), 0662), 0);
    ASSERT_TRUE(modeattr::save(pipe, 0662).isError());
    ASSERT_FALSE(permlock::lock(pipe).isError());
    EXPECT_EQ(modeOf(pipe), 0440u);
    ASSERT_FALSE(permlock::unlock(pipe).isError());
    EXPECT_EQ(modeOf(pipe), 0640u);
}

TEST_F(PermissionLockTest, AMissingItemIsAnError) {
    EXPECT_TRUE(permlock::lock(work / "gone").isError());
    EXPECT_TRUE(permlock::unlock(work / "gone").isError());
}

} // namespace
