// Archives written by SSZipArchive, read back by independent tools.
#include "ArchiveTestSupport.h"
#include "SampleTree.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>
#include <sys/stat.h>

namespace px::test {
namespace {

constexpr const char* kPassword = "s3cret pass $(x) \"q\"";

class Interop : public ::testing::Test {
  protected:
    TempDir temp;
    SampleTree tree{temp / "src"};
    std::string archive = temp / "out.zip";
    std::string extracted = temp / "x";
};

TEST_F(Interop, SevenZipExtractsPasswordArchiveByteForByte) {
    std::string sevenZ = sevenZip();
    ASSERT_FALSE(sevenZ.empty()) << "7-Zip is not installed (scripts/install-deps.sh)";
    ASSERT_TRUE(tree.pack(archive, kPassword));

    ProcessResult tested = runProcess({sevenZ, "t", std::string("-p") + kPassword, archive});
    EXPECT_EQ(tested.exitStatus, 0) << tested.out << tested.err;
    ProcessResult unpacked =
        runProcess({sevenZ, "x", "-y", std::string("-p") + kPassword, "-o" + extracted, archive});
    ASSERT_EQ(unpacked.exitStatus, 0) << unpacked.out << unpacked.err;
    tree.expectExtractedTo(extracted);
}

TEST_F(Interop, SevenZipRejectsWrongPassword) {
    std::string sevenZ = sevenZip();
    ASSERT_FALSE(sevenZ.empty()) << "7-Zip is not installed (scripts/install-deps.sh)";
    ASSERT_TRUE(tree.pack(archive, kPassword));

    ProcessResult unpacked = runProcess({sevenZ, "x", "-y", "-pwrong", "-o" + extracted, archive});
    EXPECT_NE(unpacked.exitStatus, 0);
    EXPECT_NE(readFile(extracted + "/docs/readme.txt"), tree.files[0].second);
    EXPECT_NE(runProcess({sevenZ, "t", "-pwrong", archive}).exitStatus, 0);
}

TEST_F(Interop, BsdtarListsAndExtractsPlainArchive) {
    ASSERT_TRUE(tree.pack(archive, std::nullopt));

    ProcessResult listed = runProcess({"bsdtar", "-tf", archive});
    ASSERT_EQ(listed.exitStatus, 0) << listed.err;
    std::vector<std::string> names;
    std::string line;
    for (std::istringstream lines(listed.out); std::getline(lines, line);)
        names.push_back(line);
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, tree.entryNames());

    std::filesystem::create_directories(extracted);
    ProcessResult unpacked = runProcess({"bsdtar", "-xf", archive, "-C", extracted});
    ASSERT_EQ(unpacked.exitStatus, 0) << unpacked.err;
    tree.expectExtractedTo(extracted);
}

TEST_F(Interop, PythonZipfileReadsNamesAndDataOfPlainArchive) {
    ASSERT_TRUE(tree.pack(archive, std::nullopt));

    std::vector<std::string> names;
    for (const auto& entry : listEntries(archive))
        names.push_back(entry["name"]);
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, tree.entryNames());

    ProcessResult unpacked = runProcess(
        {"python3", "-c",
         "import sys, zipfile\nz = zipfile.ZipFile(sys.argv[1])\nassert z.testzip() is None\n"
         "z.extractall(sys.argv[2])",
         archive, extracted});
    ASSERT_EQ(unpacked.exitStatus, 0) << unpacked.err;
    tree.expectExtractedTo(extracted);
}

TEST_F(Interop, UnzipRestoresPermissionsAndTimes) {
    std::string script = tree.root + "/run.sh", secret = tree.root + "/docs/secret.txt";
    writeFile(script, "#!/bin/sh\n", 0751);
    writeFile(secret, "hidden", 0600);
    std::string folder = tree.root + "/" + tree.emptyFolder;
    ::chmod(folder.c_str(), 0705);
    setModificationTime(script, 1600000000); // 2020-09-13, an even second
    setModificationTime(secret, 1234567890); // 2009-02-13
    setModificationTime(folder, 1500000000); // 2017-07-14
    SSZipArchive zip(archive);
    ASSERT_TRUE(zip.open());
    ASSERT_TRUE(zip.writeFileAtPath(script, "run.sh", std::nullopt));
    ASSERT_TRUE(zip.writeFileAtPath(secret, "docs/secret.txt", std::nullopt));
    ASSERT_TRUE(zip.writeFolderAtPath(folder, "nothing", std::nullopt));
    ASSERT_TRUE(zip.close());

    ProcessResult unpacked = runProcess({"unzip", "-q", archive, "-d", extracted});
    ASSERT_EQ(unpacked.exitStatus, 0) << unpacked.out << unpacked.err;
    auto expectItem = [&](const std::string& name, mode_t mode, std::time_t time) {
        struct stat status {};
        ASSERT_EQ(::stat((extracted + "/" + name).c_str(), &status), 0) << name;
        EXPECT_EQ(status.st_mode & 07777, mode) << name;
        EXPECT_EQ(status.st_mtime, time) << name;
    };
    expectItem("run.sh", 0751, 1600000000);
    expectItem("docs/secret.txt", 0600, 1234567890);
    expectItem("nothing", 0705, 1500000000);
}

} // namespace
} // namespace px::test
