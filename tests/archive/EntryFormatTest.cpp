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

} // namespace
} // namespace px::test
