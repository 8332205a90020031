// close() with entries compressed on several workers: large files cut into pieces, data that does
// not shrink stored, and a failing read in any worker failing the whole archive.
#include "ArchiveTestSupport.h"
#include "archive/SSZipArchive.h"

#include <cerrno>
#include <filesystem>
#include <gtest/gtest.h>
#include <unistd.h>

namespace px::test {
namespace {

std::string text(std::size_t size) {
    std::string out;
    for (std::size_t line = 0; out.size() < size; ++line)
        out += "entry " + std::to_string(line * 7919 % 10007) + " of a long listing\n";
    out.resize(size);
    return out;
}

class ParallelClose : public ::testing::Test {
  protected:
    TempDir temp;
    std::string archive = temp / "out/a.zip";

    void SetUp() override { std::filesystem::create_directories(temp / "out"); }
    void expectNothingLeft() { EXPECT_EQ(treeOf(temp / "out"), std::vector<std::string>{}); }
};

struct Content {
    const char* name;
    std::string bytes;
    int method; // as stored without a password: 0 stored, 8 deflated
};

// Text shrinks and is deflated; random data and empty files are stored; files larger than one
// piece (several MB) come back whole, in the order they were added, through 7-Zip with and
// without a password.
TEST_F(ParallelClose, PiecesOfLargeFilesJoinAndDataThatDoesNotShrinkIsStored) {
    const std::vector<Content> contents = {
        {"big.txt", text(9 << 20), 8},
        {"small.txt", text(3000), 8},
        {"big.bin", randomBytes(5 << 20, 3), 0},
        {"empty", "", 0},
        {"tiny", "ab", 0},
        {"mixed", text(3 << 20) + randomBytes(1 << 20, 4), 8},
        {"noise", randomBytes(70000, 5), 0},
        {"packed first", randomBytes(3 << 20, 6) + text(4 << 20), 8}};
    for (const auto& content : contents)
        writeFile(temp / ("in/" + std::string(content.name)), content.bytes);
    for (const std::optional<std::string>& password : {std::optional<std::string>{}, {"pw"}}) {
        SCOPED_TRACE(password ? "with a password" : "without a password");
        SSZipArchive zip(archive);
        ASSERT_TRUE(zip.open());
        for (const auto& content : contents)
            ASSERT_TRUE(zip.writeFileAtPath(temp / ("in/" + std::string(content.name)),
                                            std::nullopt, password));
        ASSERT_TRUE(zip.close()) << zip.lastError()->message;

        const auto entries = zipEntries(archive);
        ASSERT_EQ(entries.size(), contents.size());
        for (std::size_t index = 0; index < contents.size(); ++index) {
            EXPECT_EQ(entries[index].name, contents[index].name);
            EXPECT_EQ(entries[index].fileSize, std::int64_t(contents[index].bytes.size()));
            if (!password) {
                EXPECT_EQ(entries[index].compressType, contents[index].method);
            }
        }
        const std::string out = temp / "x";
        std::filesystem::remove_all(out);
        ProcessResult unpacked =
            runProcess({sevenZip(), "x", "-y", "-p" + password.value_or(""), "-o" + out, archive});
        ASSERT_EQ(unpacked.exitStatus, 0) << unpacked.out << unpacked.err;
        for (const auto& content : contents)
            EXPECT_TRUE(readFile(out + "/" + content.name) == content.bytes) << content.name;
    }
}

// A file gone before its worker opens it, and one cut short while its pieces are read: the
// archive fails with the reason and nothing is left, wherever the file is among the entries.
TEST_F(ParallelClose, AFailingReadInAnyWorkerFailsTheArchive) {
    const std::function<void(const std::string&)> faults[] = {
        [](const std::string& path) { ::unlink(path.c_str()); },
        [](const std::string& path) { ASSERT_EQ(::truncate(path.c_str(), 3 << 20), 0); }};
    for (std::size_t fault = 0; fault < std::size(faults); ++fault) {
        for (int position : {0, 5, 39}) {
            SCOPED_TRACE("fault " + std::to_string(fault) + " at " + std::to_string(position));
            SSZipArchive zip(archive);
            ASSERT_TRUE(zip.open());
            std::string victim;
            for (int index = 0; index < 40; ++index) {
                const std::string path = temp / ("in/f" + std::to_string(index));
                writeFile(path, index == position ? text(8 << 20) : text(20000));
                ASSERT_TRUE(zip.writeFileAtPath(path, std::nullopt, "pw"));
                if (index == position) victim = path;
            }
            faults[fault](victim);
            std::size_t written = 0;
            zip.setProgressHandler([&](std::size_t done) { written = done; });
            EXPECT_FALSE(zip.close());
            ASSERT_TRUE(zip.lastError().has_value());
            EXPECT_NE(zip.lastError()->message.find("f" + std::to_string(position)),
                      std::string::npos)
                << zip.lastError()->message;
            EXPECT_LE(written, std::size_t(position));
            expectNothingLeft();
        }
    }
}

} // namespace
} // namespace px::test
