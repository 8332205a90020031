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
        for (int i = 0; i < 5; ++i)
            writeFile(temp / ("in/f" + std::to_string(i)), randomBytes(50000, i));
        writeFile(temp / "in/big", randomBytes(4 << 20, 9));
    }

    // Only the archive's own folder can hold leftovers; it must be as empty as before.
    void expectNothingLeft() { EXPECT_EQ(treeOf(temp / "out"), std::vector<std::string>{}); }
};

TEST_F(Close, ProgressCountsEveryEntryInOrder) {
    std::filesystem::create_directories(temp / "in/e");
    SSZipArchive zip(archive);
    ASSERT_TRUE(zip.open());
    for (int i = 0; i < 5; ++i)
        ASSERT_TRUE(zip.writeFileAtPath(temp / ("in/f" + std::to_string(i)), std::nullopt, "pw"));
    ASSERT_TRUE(zip.writeFolderAtPath(temp / "in/e", "e", "pw"));
    std::vector<std::size_t> reports;
    zip.setProgressHandler([&](std::size_t done) { reports.push_back(done); });
    ASSERT_TRUE(zip.close());
    EXPECT_EQ(reports, (std::vector<std::size_t>{1, 2, 3, 4, 5, 6}));
}

TEST_F(Close, CancelAfterAnItemLeavesNoArchive) {
    SSZipArchive zip(archive);
    ASSERT_TRUE(zip.open());
    for (int i = 0; i < 5; ++i)
        ASSERT_TRUE(zip.writeFileAtPath(temp / ("in/f" + std::to_string(i)), std::nullopt, "pw"));
    std::atomic<bool> cancel = false;
    std::size_t lastReport = 0;
    zip.setProgressHandler([&](std::size_t done) {
        lastReport = done;
        if (done == 2) cancel = true;
    });
    zip.setCancelPredicate([&] { return cancel.load(); });
    EXPECT_FALSE(zip.close());
    ASSERT_TRUE(zip.lastError().has_value());
    EXPECT_EQ(zip.lastError()->code, ECANCELED);
    EXPECT_EQ(lastReport, 2u);
    expectNothingLeft();
}

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

TEST_F(Close, SourceThatVanishedBeforeCloseFailsItAndLeavesNothing) {
    SSZipArchive zip(archive);
    ASSERT_TRUE(zip.open());
    ASSERT_TRUE(zip.writeFileAtPath(temp / "in/f0", std::nullopt, "pw"));
    ASSERT_TRUE(zip.writeFileAtPath(temp / "in/f1", std::nullopt, "pw"));
    std::filesystem::remove(temp / "in/f1");
    EXPECT_FALSE(zip.close());
    ASSERT_TRUE(zip.lastError().has_value());
    EXPECT_NE(zip.lastError()->message.find("in/f1"), std::string::npos)
        << zip.lastError()->message;
    expectNothingLeft();
}

TEST_F(Close, SourcesThatCannotBeReadAreRefusedAtWrite) {
    ASSERT_EQ(::mkfifo((temp / "in/pipe").c_str(), 0644), 0);
    SSZipArchive zip(archive);
    ASSERT_TRUE(zip.open());
    EXPECT_FALSE(zip.writeFileAtPath(temp / "in/missing", std::nullopt, "pw"));
    EXPECT_NE(zip.lastError()->message.find("in/missing"), std::string::npos);
    EXPECT_FALSE(zip.writeFileAtPath(temp / "in/pipe", std::nullopt, "pw"));
    EXPECT_FALSE(zip.writeFileAtPath(temp / "in", std::nullopt, "pw"));
    ASSERT_TRUE(zip.writeFileAtPath(temp / "in/f0", std::nullopt, "pw"));
    ASSERT_TRUE(zip.close());
    auto entries = listEntries(archive);
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0]["name"], "f0");
}

TEST_F(Close, ArchiveWithoutEntriesIsStillWritten) {
    SSZipArchive zip(archive);
    ASSERT_TRUE(zip.open());
    ASSERT_TRUE(zip.close());
    EXPECT_EQ(listEntries(archive), nlohmann::json::array());
}

TEST_F(Close, ArchiveInMissingFolderFailsToOpen) {
    SSZipArchive zip(temp / "no/such/folder/a.zip");
    EXPECT_FALSE(zip.open());
    ASSERT_TRUE(zip.lastError().has_value());
    EXPECT_FALSE(zip.writeFileAtPath(temp / "in/f0", std::nullopt, std::nullopt));
    EXPECT_FALSE(zip.close());
}

TEST_F(Close, ArchiveIsSpentAfterClose) {
    SSZipArchive zip(archive);
    ASSERT_TRUE(zip.open());
    ASSERT_TRUE(zip.writeFileAtPath(temp / "in/f0", std::nullopt, std::nullopt));
    ASSERT_TRUE(zip.close());
    EXPECT_FALSE(zip.writeFileAtPath(temp / "in/f1", std::nullopt, std::nullopt));
    EXPECT_FALSE(zip.close());
    EXPECT_EQ(listEntries(archive).size(), 1u);
}

TEST_F(Close, ArchiveNeverClosedLeavesNothing) {
    {
        SSZipArchive zip(archive);
        ASSERT_TRUE(zip.open());
        ASSERT_TRUE(zip.writeFileAtPath(temp / "in/f0", std::nullopt, std::nullopt));
    }
    expectNothingLeft();
}

} // namespace
} // namespace px::test
