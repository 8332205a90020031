// How SSZipArchive lays out each entry, as an independent reader sees the central directory.
#include "ArchiveTestSupport.h"
#include "archive/SSZipArchive.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace px::test {
namespace {

class EntryFormat : public ::testing::Test {
  protected:
    TempDir temp;
    std::string archive = temp / "out.zip";
};

std::string compressibleText() {
    std::string text;
    for (int i = 0; i < 20000; ++i)
        text += "line " + std::to_string(i * 7919 % 1000) + " of text\n";
    return text;
}

// Unix host and real file types in the attributes; AES-256 on files but not on empty folders;
// the UTF-8 flag only where a name needs it; an empty file; a duplicate name refused.
TEST_F(EntryFormat, EntriesCarryTypeModeEncryptionAndNameFlags) {
    writeFile(temp / "f.txt", compressibleText(), 0640);
    writeFile(temp / "empty", "");
    std::filesystem::create_directories(temp / "e");
    ::chmod((temp / "e").c_str(), 0750);
    SSZipArchive zip(archive);
    ASSERT_TRUE(zip.open());
    ASSERT_TRUE(zip.writeFileAtPath(temp / "f.txt", std::nullopt, "pw"));
    ASSERT_TRUE(zip.writeFolderAtPath(temp / "e", "top/e", "pw"));
    ASSERT_TRUE(zip.writeFileAtPath(temp / "empty", "Ёлка/東京.txt", std::nullopt));
    EXPECT_FALSE(zip.writeFileAtPath(temp / "empty", "Ёлка/東京.txt", std::nullopt));
    EXPECT_TRUE(zip.lastError().has_value());
    ASSERT_TRUE(zip.close());

    const auto entries = zipEntries(archive);
    ASSERT_EQ(entries.size(), 3u);
    const ZipEntry &file = entries[0], &folder = entries[1], &utf8 = entries[2];
    EXPECT_EQ(file.name, "f.txt");
    EXPECT_EQ(file.externalAttr >> 16, S_IFREG | 0640u);
    EXPECT_TRUE(file.encrypted());
    EXPECT_EQ(file.compressType, 99); // WinZip AES; deflate inside
    EXPECT_EQ(file.aesStrength, 3);
    EXPECT_EQ(file.flagBits & 0x800, 0);
    EXPECT_EQ(folder.name, "top/e/");
    EXPECT_EQ(folder.externalAttr >> 16, S_IFDIR | 0750u);
    EXPECT_FALSE(folder.encrypted());
    EXPECT_EQ(folder.compressType, 0);
    EXPECT_EQ(folder.aesStrength, 0);
    EXPECT_EQ(utf8.name, "Ёлка/東京.txt");
    EXPECT_EQ(utf8.flagBits & 0x800, 0x800);
    EXPECT_EQ(utf8.fileSize, 0);
    for (const auto& entry : entries)
        EXPECT_EQ(entry.createSystem, 3) << entry.name;
}

// libzip takes a level of 0 for "default", which it turns into 9: the writer must not.
TEST_F(EntryFormat, TheDefaultLevelIsDeflateLevelSix) {
    writeFile(temp / "f.txt", compressibleText());
    std::int64_t six = deflatedSize(temp / "f.txt", 6), nine = deflatedSize(temp / "f.txt", 9);
    ASSERT_NE(six, nine) << "the sample must tell the levels apart";
    SSZipArchive zip(archive);
    ASSERT_TRUE(zip.open());
    ASSERT_TRUE(zip.writeFileAtPath(temp / "f.txt", std::nullopt, std::nullopt));
    ASSERT_TRUE(zip.close());
    const auto entries = zipEntries(archive);
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0].compressType, 8);
    EXPECT_EQ(entries[0].compressSize, six);
}

TEST_F(EntryFormat, DateIsTheLocalDosDateClampedToItsRange) {
    const std::pair<const char*, std::time_t> files[] = {
        {"new.txt", 1700000001}, // odd second: DOS keeps 2-second steps
        {"old.txt", 100000000},  // 1973
        {"far.txt", 5000000000}, // 2128
    };
    SSZipArchive zip(archive);
    ASSERT_TRUE(zip.open());
    for (const auto& [name, time] : files) {
        writeFile(temp / name, name);
        setModificationTime(temp / name, time);
        ASSERT_TRUE(zip.writeFileAtPath(temp / name, std::nullopt, std::nullopt));
    }
    ASSERT_TRUE(zip.close());

    std::time_t when = 1700000001;
    struct tm local {};
    ::localtime_r(&when, &local);
    auto entries = zipEntries(archive);
    ASSERT_EQ(entries.size(), 3u);
    EXPECT_EQ(entries[0].dateTime,
              (std::array<int, 6>{local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
                                  local.tm_hour, local.tm_min, local.tm_sec / 2 * 2}));
    EXPECT_EQ(entries[1].dateTime, (std::array<int, 6>{1980, 1, 1, 0, 0, 0}));
    EXPECT_EQ(entries[2].dateTime, (std::array<int, 6>{2107, 12, 31, 23, 59, 58}));
}

} // namespace
} // namespace px::test
