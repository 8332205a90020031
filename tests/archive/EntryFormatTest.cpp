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

    // The single entry of an archive holding only `path` written with these settings.
    nlohmann::json packOne(const std::string& path, int level,
                           const std::optional<std::string>& password = std::nullopt,
                           bool aes = true) {
        SSZipArchive zip(archive);
        EXPECT_TRUE(zip.open());
        EXPECT_TRUE(zip.writeFileAtPath(path, std::nullopt, level, password, aes));
        EXPECT_TRUE(zip.close());
        auto entries = listEntries(archive);
        return entries.size() == 1 ? entries[0] : nlohmann::json::object();
    }
};

std::string compressibleText() {
    std::string text;
    for (int i = 0; i < 20000; ++i)
        text += "line " + std::to_string(i * 7919 % 1000) + " of text\n";
    return text;
}

TEST_F(EntryFormat, UnixHostAndRealFileTypeInAttributes) {
    writeFile(temp / "f.txt", "x", 0640);
    std::filesystem::create_directories(temp / "e");
    ::chmod((temp / "e").c_str(), 0750);
    SSZipArchive zip(archive);
    ASSERT_TRUE(zip.open());
    ASSERT_TRUE(zip.writeFileAtPath(temp / "f.txt", std::nullopt, std::nullopt));
    ASSERT_TRUE(zip.writeFolderAtPath(temp / "e", "top/e", std::nullopt));
    ASSERT_TRUE(zip.close());

    auto entries = listEntries(archive);
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[0]["name"], "f.txt");
    EXPECT_EQ(entries[0]["create_system"], 3);
    EXPECT_EQ(entries[0]["external_attr"].get<std::uint32_t>() >> 16, S_IFREG | 0640u);
    EXPECT_EQ(entries[1]["name"], "top/e/");
    EXPECT_EQ(entries[1]["create_system"], 3);
    EXPECT_EQ(entries[1]["external_attr"].get<std::uint32_t>() >> 16, S_IFDIR | 0750u);
    EXPECT_EQ(entries[1]["file_size"], 0);
}

TEST_F(EntryFormat, PasswordEncryptsFilesWithAesButLeavesEmptyFoldersPlain) {
    writeFile(temp / "f.txt", compressibleText());
    std::filesystem::create_directories(temp / "e");
    SSZipArchive zip(archive);
    ASSERT_TRUE(zip.open());
    ASSERT_TRUE(zip.writeFileAtPath(temp / "f.txt", "f.txt", "pw"));
    ASSERT_TRUE(zip.writeFolderAtPath(temp / "e", "e", "pw"));
    ASSERT_TRUE(zip.close());

    auto entries = listEntries(archive);
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[0]["flag_bits"].get<int>() & 1, 1);
    EXPECT_EQ(entries[0]["compress_type"], 99); // WinZip AES; deflate inside
    EXPECT_EQ(entries[0]["aes_strength"], 3);
    EXPECT_EQ(entries[1]["flag_bits"].get<int>() & 1, 0);
    EXPECT_EQ(entries[1]["compress_type"], 0);
    EXPECT_EQ(entries[1]["aes_strength"], 0);
}

TEST_F(EntryFormat, WithoutAesPasswordGivesTraditionalEncryption) {
    std::string sevenZ = sevenZip();
    ASSERT_FALSE(sevenZ.empty()) << "7-Zip is not installed (scripts/install-deps.sh)";
    std::string text = compressibleText();
    writeFile(temp / "f.txt", text);
    auto entry = packOne(temp / "f.txt", SSZipArchive::kDefaultCompressionLevel, "pw", false);
    EXPECT_EQ(entry["flag_bits"].get<int>() & 1, 1);
    EXPECT_EQ(entry["compress_type"], 8);

    ASSERT_EQ(runProcess({sevenZ, "x", "-y", "-ppw", "-o" + (temp / "x"), archive}).exitStatus, 0);
    EXPECT_TRUE(readFile(temp / "x/f.txt") == text);
}

// libzip takes a level of 0 for "default", which it turns into 9: the writer must not.
TEST_F(EntryFormat, CompressionLevelsMeanWhatDeflateMeans) {
    writeFile(temp / "f.txt", compressibleText());
    std::int64_t six = deflatedSize(temp / "f.txt", 6), nine = deflatedSize(temp / "f.txt", 9);
    ASSERT_NE(six, nine) << "the sample must tell the levels apart";

    auto byDefault = packOne(temp / "f.txt", SSZipArchive::kDefaultCompressionLevel);
    EXPECT_EQ(byDefault["compress_type"], 8);
    EXPECT_EQ(byDefault["compress_size"], six);
    EXPECT_EQ(packOne(temp / "f.txt", 6)["compress_size"], six);
    EXPECT_EQ(packOne(temp / "f.txt", 9)["compress_size"], nine);
    auto stored = packOne(temp / "f.txt", 0);
    EXPECT_EQ(stored["compress_type"], 0);
    EXPECT_EQ(stored["compress_size"], stored["file_size"]);
}

TEST_F(EntryFormat, DateIsTheLocalDosDateClampedTo1980) {
    writeFile(temp / "new.txt", "n");
    writeFile(temp / "old.txt", "o");
    setModificationTime(temp / "new.txt", 1700000001); // odd second: DOS keeps 2-second steps
    setModificationTime(temp / "old.txt", 100000000);  // 1973
    SSZipArchive zip(archive);
    ASSERT_TRUE(zip.open());
    ASSERT_TRUE(zip.writeFileAtPath(temp / "new.txt", std::nullopt, std::nullopt));
    ASSERT_TRUE(zip.writeFileAtPath(temp / "old.txt", std::nullopt, std::nullopt));
    ASSERT_TRUE(zip.close());

    std::time_t when = 1700000001;
    struct tm local {};
    ::localtime_r(&when, &local);
    auto entries = listEntries(archive);
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[0]["date_time"],
              nlohmann::json({local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
                              local.tm_min, local.tm_sec / 2 * 2}));
    EXPECT_EQ(entries[1]["date_time"], nlohmann::json({1980, 1, 1, 0, 0, 0}));
}

TEST_F(EntryFormat, Utf8FlagOnlyOnNamesThatNeedIt) {
    writeFile(temp / "f", "x");
    SSZipArchive zip(archive);
    ASSERT_TRUE(zip.open());
    ASSERT_TRUE(zip.writeFileAtPath(temp / "f", "plain.txt", std::nullopt));
    ASSERT_TRUE(zip.writeFileAtPath(temp / "f", "Ёлка/東京.txt", std::nullopt));
    ASSERT_TRUE(zip.close());

    auto entries = listEntries(archive);
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[0]["flag_bits"].get<int>() & 0x800, 0);
    EXPECT_EQ(entries[1]["name"], "Ёлка/東京.txt");
    EXPECT_EQ(entries[1]["flag_bits"].get<int>() & 0x800, 0x800);
}

TEST_F(EntryFormat, EmptyFileGivesEmptyEntryAndDuplicateNamesAreRefused) {
    writeFile(temp / "empty", "");
    SSZipArchive zip(archive);
    ASSERT_TRUE(zip.open());
    ASSERT_TRUE(zip.writeFileAtPath(temp / "empty", "a", "pw"));
    EXPECT_FALSE(zip.writeFileAtPath(temp / "empty", "a", "pw"));
    ASSERT_TRUE(zip.lastError().has_value());
    ASSERT_TRUE(zip.close());

    auto entries = listEntries(archive);
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0]["file_size"], 0);
}

} // namespace
} // namespace px::test
