// The DOS date and attribute helpers.
#include "ArchiveTestSupport.h"
#include "archive/SSZipArchive.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace px::test {
namespace {

// Runs each case in a fixed time zone, so DOS dates (which are local) are known.
class ZipInfoDates : public ::testing::Test {
  protected:
    void SetUp() override {
        m_zone.emplace("TZ", "CET-1CEST,M3.5.0,M10.5.0/3"); // Berlin, without zone files
        ::tzset();
    }
    void TearDown() override {
        m_zone.reset();
        ::tzset();
    }

  private:
    std::optional<ScopedEnv> m_zone;
};

TEST_F(ZipInfoDates, LocalTimeInDosFields) {
    ZipFileInfo info;
    SSZipArchive::zipInfo(info, std::time_t{1700000001}); // 2023-11-14 23:13:21 in Berlin
    EXPECT_EQ(info.dosDate, (43 << 9) | (11 << 5) | 14);
    EXPECT_EQ(info.dosTime, (23 << 11) | (13 << 5) | 10);
    EXPECT_EQ(SSZipArchive::dateOfZipInfo(info), 1700000000);
}

TEST_F(ZipInfoDates, SummerTimeRoundTrips) {
    ZipFileInfo info;
    SSZipArchive::zipInfo(info, std::time_t{1688212800}); // 2023-07-01 14:00:00 in Berlin
    EXPECT_EQ(info.dosTime, 14 << 11);
    EXPECT_EQ(SSZipArchive::dateOfZipInfo(info), 1688212800);
}

TEST_F(ZipInfoDates, DatesOutsideDosRangeAreClamped) {
    ZipFileInfo info;
    SSZipArchive::zipInfo(info, std::time_t{0});
    EXPECT_EQ(info.dosDate, (0 << 9) | (1 << 5) | 1);
    EXPECT_EQ(info.dosTime, 0);
    SSZipArchive::zipInfo(info, std::time_t{5000000000}); // 2128
    EXPECT_EQ(info.dosDate, (127 << 9) | (12 << 5) | 31);
    EXPECT_EQ(info.dosTime, (23 << 11) | (59 << 5) | 29);
}

TEST(ZipInfoAttributes, TypeAndPermissionsOfFilesFoldersAndLinks) {
    TempDir temp;
    writeFile(temp / "f", "x", 04755);
    std::filesystem::create_directories(temp / "d");
    ::chmod((temp / "d").c_str(), 0711);
    std::filesystem::create_symlink(temp / "f", temp / "link");

    ZipFileInfo file, folder, link, missing;
    SSZipArchive::zipInfo(file, temp / "f");
    SSZipArchive::zipInfo(folder, temp / "d");
    SSZipArchive::zipInfo(link, temp / "link");
    SSZipArchive::zipInfo(missing, temp / "nothing");
    EXPECT_EQ(file.externalFileAttributes, (S_IFREG | 04755u) << 16);
    EXPECT_EQ(folder.externalFileAttributes, (S_IFDIR | 0711u) << 16);
    EXPECT_EQ(link.externalFileAttributes, file.externalFileAttributes);
    EXPECT_EQ(file.internalFileAttributes, 0u);
    EXPECT_EQ(missing.externalFileAttributes, 0u);
    EXPECT_EQ(missing.dosDate, 0);
}

} // namespace
} // namespace px::test
