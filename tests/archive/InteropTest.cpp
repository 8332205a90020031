// Archives written by SSZipArchive, read back by independent tools.
#include "ArchiveTestSupport.h"
#include "archive/SSZipArchive.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace px::test {
namespace {

constexpr const char* kPassword = "s3cret pass $(x) \"q\"";

// A folder of files worth archiving: text, random data, an empty file, names in Cyrillic,
// Japanese, with accents and shell characters, nested folders and one empty folder.
class Interop : public ::testing::Test {
  protected:
    void SetUp() override {
        std::string prose;
        for (int i = 0; i < 40000; ++i)
            prose += (i % 3 ? "menu folder " : "данные é\n") + std::to_string(i % 97);
        files = {{"docs/readme.txt", prose},
                 {"docs/empty.txt", ""},
                 {"data/random.bin", randomBytes(300000, 1)},
                 {"data/deep/er/small.bin", randomBytes(100, 2)},
                 {"Привет мир.txt", "кириллица"},
                 {"日本語のファイル.txt", "日本語"},
                 {"Äpfel/Öl.txt", "umlauts"},
                 {"odd name $(echo x) \"q\".txt", "shell characters"}};
        for (const auto& [name, bytes] : files)
            writeFile(root + "/" + name, bytes);
        std::filesystem::create_directories(root + "/" + emptyFolder);
    }
    // Packs every file and the empty folder.
    void pack(const std::optional<std::string>& password) {
        SSZipArchive zip(archive);
        ASSERT_TRUE(zip.open());
        for (const auto& [name, bytes] : files)
            ASSERT_TRUE(zip.writeFileAtPath(root + "/" + name, name, password)) << name;
        ASSERT_TRUE(zip.writeFolderAtPath(root + "/" + emptyFolder, emptyFolder, password));
        ASSERT_TRUE(zip.close()) << (zip.lastError() ? zip.lastError()->message : "");
    }
    void expectExtracted() const {
        for (const auto& [name, bytes] : files)
            EXPECT_TRUE(readFile(extracted + "/" + name) == bytes) << name << " differs";
        EXPECT_TRUE(std::filesystem::is_empty(extracted + "/" + emptyFolder));
    }

    TempDir temp;
    std::string root = temp / "src", archive = temp / "out.zip", extracted = temp / "x";
    std::string emptyFolder = "data/nothing";
    std::vector<std::pair<std::string, std::string>> files;
};

TEST_F(Interop, SevenZipExtractsThePasswordArchiveByteForByteAndRefusesAWrongPassword) {
    std::string sevenZ = sevenZip();
    ASSERT_FALSE(sevenZ.empty()) << "7-Zip is not installed (scripts/install-deps.sh)";
    pack(kPassword);

    EXPECT_NE(runProcess({sevenZ, "t", "-pwrong", archive}).exitStatus, 0);
    ProcessResult unpacked =
        runProcess({sevenZ, "x", "-y", std::string("-p") + kPassword, "-o" + extracted, archive});
    ASSERT_EQ(unpacked.exitStatus, 0) << unpacked.out << unpacked.err;
    expectExtracted();
}

TEST_F(Interop, UnzipRestoresAPlainArchiveWithPermissionsAndTimes) {
    const std::tuple<std::string, mode_t, std::time_t> items[] = {
        {"run.sh", 0751, 1600000000},          // 2020-09-13, an even second
        {"docs/secret.txt", 0600, 1234567890}, // 2009-02-13
        {emptyFolder, 0705, 1500000000}};      // 2017-07-14
    for (const auto& [name, bytes] :
         {std::pair{"run.sh", "#!/bin/sh\n"}, {"docs/secret.txt", "hidden"}}) {
        files.push_back({name, bytes});
        writeFile(root + "/" + name, bytes);
    }
    for (const auto& [name, mode, time] : items) {
        ::chmod((root + "/" + name).c_str(), mode);
        setModificationTime(root + "/" + name, time);
    }
    pack(std::nullopt);

    ProcessResult unpacked = runProcess({"unzip", "-q", archive, "-d", extracted});
    ASSERT_EQ(unpacked.exitStatus, 0) << unpacked.out << unpacked.err;
    expectExtracted();
    for (const auto& [name, mode, time] : items) {
        struct stat status {};
        ASSERT_EQ(::stat((extracted + "/" + name).c_str(), &status), 0) << name;
        EXPECT_EQ(status.st_mode & 07777, mode) << name;
        EXPECT_EQ(status.st_mtime, time) << name;
    }
}

} // namespace
} // namespace px::test
