// What close() does with progress, cancel and failing sources: the archive is complete at its
// path, or nothing new is there.
#include "ArchiveTestSupport.h"
#include "archive/SSZipArchive.h"

#include <atomic>
#include <cerrno>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace px::test {
namespace {

class Close : public ::testing::Test {
  protected:
    TempDir temp;
    std::string archive = temp / "out/archive.zip";

    void SetUp() override {
        std::filesystem::create_directories(temp / "out");
        writeFile(temp / "in/f0", randomBytes(50000, 0));
        writeFile(temp / "in/big", randomBytes(4 << 20, 9));
    }

    // Only the archive's own folder can hold leftovers; it must be as empty as before.
    void expectNothingLeft() { EXPECT_EQ(treeOf(temp / "out"), std::vector<std::string>{}); }
};

TEST_F(Close, CancelInsideOneLargeFileStopsReadingIt) {
    SSZipArchive zip(archive);
    ASSERT_TRUE(zip.open());
    ASSERT_TRUE(zip.writeFileAtPath(temp / "in/big", std::nullopt, std::nullopt));
    int polls = 0;
    zip.setCancelPredicate([&] { return ++polls > 20; });
    EXPECT_FALSE(zip.close());
    EXPECT_EQ(zip.lastError()->code, ECANCELED);
    EXPECT_LT(polls, 30) << "reading went on after the cancel";
    expectNothingLeft();
}

TEST_F(Close, CancelKeepsTheArchiveThatWasThereBefore) {
    writeFile(archive, "earlier archive");
    SSZipArchive zip(archive);
    ASSERT_TRUE(zip.open());
    ASSERT_TRUE(zip.writeFileAtPath(temp / "in/big", std::nullopt, std::nullopt));
    zip.setCancelPredicate([] { return true; });
    EXPECT_FALSE(zip.close());
    EXPECT_EQ(readFile(archive), "earlier archive");
    EXPECT_EQ(treeOf(temp / "out"), std::vector<std::string>{"archive.zip"});
}

TEST_F(Close, AnArchiveNeverClosedLeavesNothing) {
    {
        SSZipArchive abandoned(archive);
        ASSERT_TRUE(abandoned.open());
        ASSERT_TRUE(abandoned.writeFileAtPath(temp / "in/f0", std::nullopt, std::nullopt));
    }
    expectNothingLeft();
}

} // namespace
} // namespace px::test
