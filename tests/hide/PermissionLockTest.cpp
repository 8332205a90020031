#include "actions/PermissionLock.h"

#include "actions/ModeAttribute.h"
#include "support/FileHash.h"
#include "support_files/TestSupport.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>

using namespace px;
using namespace px::test;

namespace {

std::string attribute(const std::string& path) {
    char buffer[64] = {};
    ssize_t size = ::getxattr(path.c_str(), modeattr::kName, buffer, sizeof buffer);
    return size < 0 ? std::string("<none>") : std::string(buffer, static_cast<std::size_t>(size));
}

class PermissionLockTest : public ::testing::Test {
  protected:
    std::string item(const std::string& name, unsigned mode) {
        std::string path = work.write(name, "x");
        EXPECT_EQ(::chmod(path.c_str(), mode), 0);
        return path;
    }
    TempDir work;
};

TEST_F(PermissionLockTest, LockingAndUnlockingRestoresTheModeExactly) {
    std::string folder = work.mkdir("box");
    ::chmod(folder.c_str(), 0775);
    for (const std::string& path : {item("a", 0640), item("b", 04777), item("c", 0200), folder}) {
        SCOPED_TRACE(path);
        const unsigned mode = modeOf(path);
        ASSERT_FALSE(permlock::lock(path).isError());
        ASSERT_FALSE(permlock::lock(path).isError()); // the first saved mode stays
        EXPECT_EQ(modeOf(path), mode & ~0222u);
        EXPECT_TRUE(filehash::isLocked(path));
        EXPECT_EQ(attribute(path), modeattr::encode(mode));
        ASSERT_FALSE(permlock::unlock(path).isError());
        EXPECT_EQ(modeOf(path), mode);
        EXPECT_FALSE(filehash::isLocked(path));
        EXPECT_EQ(attribute(path), "<none>");
    }
}

TEST_F(PermissionLockTest, UnlockingWithoutAUsableAttributeGivesTheOwnerWriteBack) {
    std::string byHand = item("hand", 0444);
    std::string broken = item("broken", 0440);
    ASSERT_EQ(::setxattr(broken.c_str(), modeattr::kName, "rw-r--r--", 9, 0), 0);
    std::string stale = item("stale", 0600);
    ASSERT_EQ(::setxattr(stale.c_str(), modeattr::kName, "0666", 4, 0), 0);
    for (const auto& path : {byHand, broken, stale})
        ASSERT_FALSE(permlock::unlock(path).isError()) << path;
    EXPECT_EQ(modeOf(byHand), 0644u);
    EXPECT_EQ(modeOf(broken), 0640u);
    EXPECT_EQ(modeOf(stale), 0600u) << "an unlocked item keeps its mode";
    // Read bits the user took away while the item was locked are not given back.
    std::string narrowed = item("narrowed", 0644);
    ASSERT_FALSE(permlock::lock(narrowed).isError());
    ::chmod(narrowed.c_str(), 0400);
    ASSERT_FALSE(permlock::unlock(narrowed).isError());
    EXPECT_EQ(modeOf(narrowed), 0600u);
    EXPECT_EQ(attribute(broken), "<none>");
    EXPECT_EQ(attribute(stale), "<none>");
}

// A named pipe carries no user attributes (the kernel refuses them as it does on file systems
// without them): the lock goes on without the saved bits, and unlocking falls back.
TEST_F(PermissionLockTest, WithoutUserAttributesLockStillWorksAndAMissingItemIsAnError) {
    std::string pipe = work / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0662), 0);
    ASSERT_EQ(::chmod(pipe.c_str(), 0662), 0);
    ASSERT_TRUE(modeattr::save(pipe, 0662).isError());
    ASSERT_FALSE(permlock::lock(pipe).isError());
    EXPECT_EQ(modeOf(pipe), 0440u);
    ASSERT_FALSE(permlock::unlock(pipe).isError());
    EXPECT_EQ(modeOf(pipe), 0640u);
    EXPECT_TRUE(permlock::lock(work / "gone").isError());
    EXPECT_TRUE(permlock::unlock(work / "gone").isError());
}

} // namespace
