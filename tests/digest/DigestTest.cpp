#include "media/Digest.h"

#include "actions/PrivilegeDrop.h"
#include "support_files/TestSupport.h"

#include <fstream>
#include <gtest/gtest.h>
#include <random>
#include <sys/stat.h>

namespace px::digest {
namespace {

using test::TempDir;

std::string randomBytes(std::size_t size, unsigned seed) {
    std::string bytes(size, '\0');
    std::generate(bytes.begin(), bytes.end(), std::mt19937(seed));
    return bytes;
}

// The digest text coreutils prints for the file: the first word of its output.
std::string coreutilsDigest(const std::string& tool, const std::string& path) {
    auto result = test::runProcess({tool, "--", path});
    EXPECT_EQ(result.exitStatus, 0) << tool << ": " << result.err;
    return result.out.substr(0, result.out.find(' '));
}

TEST(FileDigest, MatchesCoreutilsAroundTheBufferSizeAndTheReadAheadRing) {
    const std::pair<const char*, std::optional<std::string> (*)(const std::string&)> tools[] = {
        {"md5sum", filehash::md5HashOfFileAtPath},
        {"sha1sum", filehash::sha1HashOfFileAtPath},
        {"sha256sum", filehash::sha256HashOfFileAtPath},
        {"sha512sum", filehash::sha512HashOfFileAtPath},
    };
    const std::size_t sizes[] = {0,
                                 1,
                                 4097,
                                 kReadBufferSize - 1,
                                 kReadBufferSize,
                                 kReadBufferSize + 1,
                                 3 * kReadBufferSize + 12345,
                                 (2 * kReadAheadDepth + 1) * kReadBufferSize + 7};
    TempDir dir;
    for (std::size_t size : sizes) {
        std::string path = dir.write("data-" + std::to_string(size), randomBytes(size, 7));
        for (const auto& [program, hash] : tools) {
            SCOPED_TRACE(std::string(program) + " " + std::to_string(size));
            auto text = hash(path);
            ASSERT_TRUE(text);
            EXPECT_EQ(*text, coreutilsDigest(program, path));
        }
    }
}

TEST(FileDigest, WhatCannotBeReadGivesNothingAndSaysWhy) {
    TempDir dir;
    std::string gone = dir / "gone.bin";
    EXPECT_FALSE(filehash::sha256HashOfFileAtPath(gone));
    auto error = digestOfFile(gone, Algorithm::SHA256);
    ASSERT_TRUE(error.isError());
    EXPECT_NE(error.error().message.find(gone), std::string::npos);
    EXPECT_FALSE(filehash::md5HashOfFileAtPath(dir.mkdir("folder")));
    EXPECT_TRUE(digestOfFile("", Algorithm::MD5).isError());

    // A pipe without a writer must neither block nor count as an empty file.
    std::string fifo = dir / "pipe";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    EXPECT_FALSE(filehash::sha1HashOfFileAtPath(fifo));

    // A file its reader may not open; then the same file once it may.
    std::string path = dir.write("secret", "hidden");
    ASSERT_EQ(::chmod(path.c_str(), 0000), 0);
    EXPECT_TRUE(test::checkUnprivileged(
        dir.path(), [&] { return !filehash::md5HashOfFileAtPath(path).has_value(); }));
    ASSERT_EQ(::chmod(path.c_str(), 0644), 0);
    const std::string expected = coreutilsDigest("md5sum", path);
    EXPECT_TRUE(test::checkUnprivileged(
        dir.path(), [&] { return filehash::md5HashOfFileAtPath(path) == expected; }));
}

long peakResidentKiB() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.rfind("VmHWM:", 0) == 0) return std::stol(line.substr(6));
    return -1;
}

TEST(FileDigest, LargeFileIsDigestedInConstantMemory) {
    TempDir dir;
    std::string path = dir / "large.bin";
    {
        std::ofstream out(path, std::ios::binary);
        std::string block = randomBytes(kReadBufferSize, 11);
        for (int i = 0; i < 96; ++i)
            out.write(block.data(), static_cast<std::streamsize>(block.size()));
    }
    filehash::sha1HashOfFileAtPath(dir.write("warm", "x")); // loads OpenSSL's providers
    std::ofstream("/proc/self/clear_refs") << "5";          // restarts the peak count
    long before = peakResidentKiB();
    ASSERT_GT(before, 0);
    auto text = filehash::sha256HashOfFileAtPath(path);
    ASSERT_TRUE(text);
    EXPECT_EQ(*text, coreutilsDigest("sha256sum", path));
    long grown = peakResidentKiB() - before;
    EXPECT_LT(grown, 16 * 1024) << "peak grew by " << grown << " KiB for a 96 MiB file";
}

} // namespace
} // namespace px::digest
