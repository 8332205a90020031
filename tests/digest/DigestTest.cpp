#include "media/Digest.h"

#include "actions/PrivilegeDrop.h"
#include "support_files/TestSupport.h"

#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <random>
#include <sys/stat.h>

namespace px::digest {
namespace {

using test::TempDir;

std::string randomBytes(std::size_t size, unsigned seed) {
    std::mt19937 engine(seed);
    std::string bytes(size, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(engine() & 0xFF);
    return bytes;
}

// The digest text coreutils prints for the file: the first word of its output.
std::string coreutilsDigest(const std::string& tool, const std::string& path) {
    auto result = test::runProcess({tool, "--", path});
    EXPECT_EQ(result.exitStatus, 0) << tool << ": " << result.err;
    return result.out.substr(0, result.out.find(' '));
}

struct Tool {
    Algorithm algorithm;
    const char* program;
    std::optional<std::string> (*hash)(const std::string&);
};

const Tool kTools[] = {
    {Algorithm::MD5, "md5sum", filehash::md5HashOfFileAtPath},
    {Algorithm::SHA1, "sha1sum", filehash::sha1HashOfFileAtPath},
    {Algorithm::SHA256, "sha256sum", filehash::sha256HashOfFileAtPath},
    {Algorithm::SHA512, "sha512sum", filehash::sha512HashOfFileAtPath},
};

TEST(FileDigest, MatchesCoreutilsAroundTheBufferSizeAndTheReadAheadRing) {
    TempDir dir;
    const std::size_t sizes[] = {0,
                                 1,
                                 4095,
                                 4097,
                                 kReadBufferSize - 1,
                                 kReadBufferSize,
                                 kReadBufferSize + 1,
                                 3 * kReadBufferSize + 12345,
                                 (2 * kReadAheadDepth + 1) * kReadBufferSize + 7};
    for (std::size_t size : sizes) {
        std::string path = dir.write("data-" + std::to_string(size), randomBytes(size, 7));
        for (const Tool& tool : kTools) {
            auto text = tool.hash(path);
            ASSERT_TRUE(text) << tool.program << " " << size;
            EXPECT_EQ(*text, coreutilsDigest(tool.program, path)) << tool.program << " " << size;
            EXPECT_EQ(text->size(), 2 * digestLength(tool.algorithm));
        }
    }
}

TEST(FileDigest, EmptyFileGivesTheEmptyInputDigests) {
    TempDir dir;
    std::string path = dir.write("empty");
    EXPECT_EQ(filehash::md5HashOfFileAtPath(path), "d41d8cd98f00b204e9800998ecf8427e");
    EXPECT_EQ(filehash::sha1HashOfFileAtPath(path), "da39a3ee5e6b4b0d3255bfef95601890afd80709");
    EXPECT_EQ(filehash::sha256HashOfFileAtPath(path),
              "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(filehash::sha512HashOfFileAtPath(path)->substr(0, 16), "cf83e1357eefb8bd");
}

TEST(FileDigest, NamesWithShellCharactersAreOrdinaryFiles) {
    TempDir dir;
    std::string path = dir.write("a\"; rm x $(reboot) 'q'", "abc");
    EXPECT_EQ(filehash::md5HashOfFileAtPath(path), "900150983cd24fb0d6963f7d28e17f72");
}

TEST(FileDigest, WhatCannotBeReadGivesNothingAndSaysWhy) {
    TempDir dir;
    std::string gone = dir / "gone.bin";
    EXPECT_FALSE(filehash::sha256HashOfFileAtPath(gone));
    auto error = digestOfFile(gone, Algorithm::SHA256);
    ASSERT_TRUE(error.isError());
    EXPECT_NE(error.error().message.find(gone), std::string::npos);

    std::string folder = dir.mkdir("folder");
    EXPECT_FALSE(filehash::md5HashOfFileAtPath(folder));
    EXPECT_EQ(digestOfFile("", Algorithm::MD5).isError(), true);

    // A pipe without a writer must neither block nor count as an empty file.
    std::string fifo = dir / "pipe";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    EXPECT_FALSE(filehash::sha1HashOfFileAtPath(fifo));
}

TEST(FileDigest, UnreadableFileGivesNothing) {
    TempDir dir;
    std::string path = dir.write("secret", "hidden");
    ASSERT_EQ(::chmod(path.c_str(), 0000), 0);
    EXPECT_TRUE(test::checkUnprivileged(
        dir.path(), [&] { return !filehash::md5HashOfFileAtPath(path).has_value(); }));
    // The same file is fine for whoever may read it.
    ASSERT_EQ(::chmod(path.c_str(), 0644), 0);
    const std::string expected = coreutilsDigest("md5sum", path);
    EXPECT_TRUE(test::checkUnprivileged(
        dir.path(), [&] { return filehash::md5HashOfFileAtPath(path) == expected; }));
}

TEST(DigestContext, ChunkedUpdatesEqualOneUpdateAndContextsAreReusable) {
    std::string data = randomBytes(100000, 3);
    auto bytes = std::span(reinterpret_cast<const unsigned char*>(data.data()), data.size());
    Context whole(Algorithm::SHA512), pieces(Algorithm::SHA512);
    ASSERT_FALSE(whole.initialise().isError());
    ASSERT_FALSE(whole.update(bytes).isError());
    auto expected = whole.finalise();
    ASSERT_FALSE(expected.isError());
    EXPECT_EQ(expected.value().size(), 64u);
    for (int round = 0; round < 2; ++round) {
        ASSERT_FALSE(pieces.initialise().isError());
        for (std::size_t at = 0, step = 1; at < bytes.size();
             at += step, step = step * 3 % 4099 + 1)
            ASSERT_FALSE(
                pieces.update(bytes.subspan(at, std::min(step, bytes.size() - at))).isError());
        auto got = pieces.finalise();
        ASSERT_FALSE(got.isError());
        EXPECT_EQ(hexText(got.value()), hexText(expected.value())) << "round " << round;
    }
}

TEST(DigestText, LowerCaseHexWithoutSeparators) {
    const unsigned char bytes[] = {0x00, 0x0f, 0xa0, 0xff};
    EXPECT_EQ(hexText(bytes), "000fa0ff");
    EXPECT_EQ(hexText({}), "");
}

TEST(DigestTag, PositionsChooseTheAlgorithmAndOthersFallBackToSha512) {
    EXPECT_EQ(algorithmForTag(0), Algorithm::MD5);
    EXPECT_EQ(algorithmForTag(1), Algorithm::SHA1);
    EXPECT_EQ(algorithmForTag(2), Algorithm::SHA256);
    EXPECT_EQ(algorithmForTag(3), Algorithm::SHA512);
    EXPECT_EQ(algorithmForTag(4), Algorithm::SHA512);
    EXPECT_EQ(algorithmForTag(-1), Algorithm::SHA512);
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
