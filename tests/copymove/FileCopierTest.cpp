#include "actions/FileCopier.h"

#include "TreeSnapshot.h"
#include "support_files/TestSupport.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using namespace px;
using namespace px::test;

namespace {

constexpr long long kSecond = 1000000000LL;

class FileCopierTest : public ::testing::Test {
  protected:
    // A folder holding what a real tree holds: nested folders, an empty file, odd names,
    // unusual modes, links (relative, absolute, dangling, to a folder), a pipe, a socket.
    std::string makeTree() {
        std::string root = work.mkdir("src");
        work.write("src/a.txt", "alpha");
        work.write("src/empty");
        work.write("src/sub/deeper/b \"$(reboot)\".txt", std::string(300000, 'b'));
        work.write("src/sub/script.sh", "#!/bin/sh\n");
        std::string big(5 * 1024 * 1024 + 17, '\0'); // more than one chunk of reads
        for (std::size_t i = 0; i < big.size(); ++i)
            big[i] = static_cast<char>(i * 131 % 251);
        work.write("src/sub/big.bin", big);
        ::chmod((root + "/sub/script.sh").c_str(), 04755);
        ::chmod((root + "/a.txt").c_str(), 0604);
        ::chmod(work.write("src/shared", "for all").c_str(), 0666); // more than the umask allows
        ::symlink("a.txt", (root + "/link").c_str());
        ::symlink("/nowhere/at/all", (root + "/dangling").c_str());
        ::symlink("sub", (root + "/folder-link").c_str());
        ::mkfifo((root + "/pipe").c_str(), 0640);
        makeSocket(root + "/sock");
        work.mkdir("src/locked");
        work.write("src/locked/inside", "x");
        ::chmod((root + "/locked").c_str(), 0555);
        long long stamp = 1500000000 * kSecond + 123456789;
        for (const auto& [relative, item] : snapshot(root)) {
            setTimes(root + (relative.empty() ? "" : "/" + relative), stamp - kSecond, stamp);
            stamp += 1111;
        }
        return root;
    }
    static void makeSocket(const std::string& path) {
        int fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof(address.sun_path) - 1);
        ::bind(fd, reinterpret_cast<sockaddr*>(&address), sizeof(address));
        ::close(fd);
    }

    TempDir work;
};

TEST_F(FileCopierTest, ATreeArrivesWithModesTimesLinksAndSpecialFiles) {
    const std::string root = makeTree();
    const TreeState before = snapshot(root);
    ASSERT_TRUE(filecopy::copyItem(root, work / "copy"));
    EXPECT_EQ(snapshot(work / "copy"), before);
    EXPECT_EQ(snapshot(root), before);
}

// Each kind of item copied on its own is copied as itself (a link stays a link).
TEST_F(FileCopierTest, SingleItemsOfEveryKind) {
    makeTree();
    for (const char* name : {"a.txt", "empty", "link", "dangling", "folder-link", "pipe", "sock"}) {
        SCOPED_TRACE(name);
        const std::string source = work / ("src/" + std::string(name));
        const std::string target = work / ("one-" + std::string(name));
        ASSERT_TRUE(filecopy::copyItem(source, target));
        EXPECT_EQ(snapshot(target), snapshot(source));
    }
}

TEST_F(FileCopierTest, AnExistingTargetOrAMissingSourceIsRefusedAndNothingIsTouched) {
    const std::string taken = work.write("taken", "old");
    auto copied = filecopy::copyItem(work.write("f", "new"), taken);
    ASSERT_FALSE(copied);
    EXPECT_EQ(copied.error().code, EEXIST);
    EXPECT_EQ(readFile(taken), "old");
    work.write("box/keep", "k");
    EXPECT_FALSE(filecopy::copyItem(makeTree(), work / "box"));
    EXPECT_EQ(listing(work / "box"), std::vector<std::string>{"keep"});

    auto missing = filecopy::copyItem(work / "nothing", work / "x");
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.error().code, ENOENT);
    EXPECT_NE(missing.error().message.find("No such file or directory"), std::string::npos);
    EXPECT_FALSE(filecopy::copyItem(taken, work / "no/such/folder/x"));
    EXPECT_FALSE(exists(work / "x"));
}

// The large file cannot be written in full: the copy stops, whatever it made goes (read-only
// folders included), and the source stays as it was.
TEST_F(FileCopierTest, ACopyFailingHalfWayLeavesNothingAndTheSourceIntact) {
    const std::string root = makeTree();
    const TreeState before = snapshot(root);
    const std::string target = work / "copy";
    const int status = inChildWithFileSizeLimit(1024 * 1024, [&] {
        auto copied = filecopy::copyItem(root, target);
        return copied ? 0 : copied.error().code;
    });
    EXPECT_EQ(status, EFBIG);
    EXPECT_FALSE(exists(target));
    EXPECT_EQ(snapshot(root), before);
}

TEST_F(FileCopierTest, AnUnreadableFileFailsTheCopyWithTheSystemsReason) {
    if (::geteuid() == 0) GTEST_SKIP() << "root reads every file";
    const std::string root = makeTree();
    const std::string secret = work.write("src/sub/secret", "s");
    ::chmod(secret.c_str(), 0);
    auto copied = filecopy::copyItem(root, work / "copy");
    ASSERT_FALSE(copied);
    EXPECT_EQ(copied.error().code, EACCES);
    EXPECT_NE(copied.error().message.find(secret), std::string::npos);
    EXPECT_NE(copied.error().message.find("Permission denied"), std::string::npos);
    EXPECT_FALSE(exists(work / "copy"));
}

} // namespace
