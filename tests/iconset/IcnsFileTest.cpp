#include "media/IcnsFile.h"

#include "IconTestSupport.h"

#include <gtest/gtest.h>

namespace px::media::icns {
namespace {

using test::TempDir;

std::vector<std::uint8_t> bytesOf(const std::string& text) {
    return {text.begin(), text.end()};
}

std::uint32_t bigEndianAt(const std::vector<std::uint8_t>& bytes, std::size_t offset) {
    return (std::uint32_t{bytes[offset]} << 24) | (std::uint32_t{bytes[offset + 1]} << 16) |
           (std::uint32_t{bytes[offset + 2]} << 8) | std::uint32_t{bytes[offset + 3]};
}

std::string typeAt(const std::vector<std::uint8_t>& bytes, std::size_t offset) {
    return std::string(bytes.begin() + offset, bytes.begin() + offset + 4);
}

std::vector<std::string> typesOf(const std::vector<Chunk>& chunks) {
    std::vector<std::string> types;
    for (const Chunk& chunk : chunks)
        types.push_back(chunk.type);
    return types;
}

// Walks the file as a reader would: header, table of contents, then the chunks it announces.
TEST(IcnsContainer, EncodeWritesHeaderTableOfContentsAndChunks) {
    auto file = encode({{"ic07", bytesOf("abc")}, {"ic10", bytesOf("defgh")}});
    ASSERT_EQ(file.size(), 8u + 24u + 11u + 13u);
    EXPECT_EQ(typeAt(file, 0), "icns");
    EXPECT_EQ(bigEndianAt(file, 4), file.size());
    EXPECT_EQ(typeAt(file, 8), "TOC ");
    EXPECT_EQ(bigEndianAt(file, 12), 24u);
    EXPECT_EQ(typeAt(file, 16), "ic07");
    EXPECT_EQ(bigEndianAt(file, 20), 11u);
    EXPECT_EQ(typeAt(file, 24), "ic10");
    EXPECT_EQ(bigEndianAt(file, 28), 13u);
    EXPECT_EQ(typeAt(file, 32), "ic07");
    EXPECT_EQ(bigEndianAt(file, 36), 11u);
    EXPECT_EQ(std::string(file.begin() + 40, file.begin() + 43), "abc");
    EXPECT_EQ(typeAt(file, 43), "ic10");
    EXPECT_EQ(std::string(file.begin() + 51, file.end()), "defgh");
}

TEST(IcnsContainer, DecodeGivesBackTheChunksWithoutTheTableOfContents) {
    std::vector<Chunk> chunks{{"icp4", bytesOf("x")}, {"ic11", {}}, {"ic09", bytesOf("y\0z")}};
    auto decoded = decode(encode(chunks));
    ASSERT_TRUE(decoded);
    ASSERT_EQ(typesOf(*decoded), typesOf(chunks));
    for (std::size_t i = 0; i < chunks.size(); ++i)
        EXPECT_EQ((*decoded)[i].data, chunks[i].data) << chunks[i].type;
}

TEST(IcnsContainer, DecodeRefusesMalformedFiles) {
    auto good = encode({{"ic07", bytesOf("abcd")}});
    EXPECT_FALSE(decode({}));
    EXPECT_FALSE(decode(bytesOf("icns")));

    auto badMagic = good;
    badMagic[0] = 'X';
    EXPECT_FALSE(decode(badMagic));

    auto truncated = good;
    truncated.pop_back();
    EXPECT_FALSE(decode(truncated)) << "file length no longer matches the header";

    auto overrun = good;
    overrun[good.size() - 12 + 7] = 0xff; // the chunk claims more bytes than the file has
    EXPECT_FALSE(decode(overrun));

    auto tooShort = good;
    tooShort[good.size() - 12 + 7] = 4; // a length below the chunk's own header
    EXPECT_FALSE(decode(tooShort));

    auto halfHeader = bytesOf(std::string("icns\0\0\0\x0cic07", 12));
    EXPECT_FALSE(decode(halfHeader));
}

// The .iconset folder of the macOS table: 16, 128, 256 and 512 points, each with its @2x.
class IconsetFolder : public ::testing::Test {
  protected:
    void SetUp() override {
        iconset = dir.mkdir("x.iconset");
        for (int points : {16, 128, 256, 512}) {
            std::string stem =
                iconset + "/icon_" + std::to_string(points) + "x" + std::to_string(points);
            test::writePng(test::gradientImage(points, points), stem + ".png");
            test::writePng(test::gradientImage(2 * points, 2 * points), stem + "@2x.png");
        }
    }
    TempDir dir;
    std::string iconset;
};

TEST_F(IconsetFolder, EveryFileBecomesItsChunkSmallestFirst) {
    std::string icnsPath = dir / "AppIcon.icns";
    ASSERT_TRUE(writeFromIconset(iconset, icnsPath));
    auto chunks = decode(bytesOf(test::readFile(icnsPath)));
    ASSERT_TRUE(chunks);
    EXPECT_EQ(typesOf(*chunks), (std::vector<std::string>{"icp4", "ic11", "ic07", "ic13", "ic08",
                                                          "ic14", "ic09", "ic10"}));
    EXPECT_EQ((*chunks)[0].data, bytesOf(test::readFile(iconset + "/icon_16x16.png")));
    EXPECT_EQ((*chunks)[7].data, bytesOf(test::readFile(iconset + "/icon_512x512@2x.png")));
}

TEST_F(IconsetFolder, PillowReadsEverySize) {
    std::string icnsPath = dir / "AppIcon.icns";
    ASSERT_TRUE(writeFromIconset(iconset, icnsPath));
    EXPECT_EQ(test::pillowIcnsSizes(icnsPath),
              (std::vector<std::string>{"1024x1024", "128x128", "16x16", "256x256", "256x256",
                                        "32x32", "512x512", "512x512"}));
}

TEST_F(IconsetFolder, TheThirtyTwoPointFilesAreTakenWhenPresent) {
    test::writePng(test::gradientImage(32, 32), iconset + "/icon_32x32.png");
    test::writePng(test::gradientImage(64, 64), iconset + "/icon_32x32@2x.png");
    std::string icnsPath = dir / "full.icns";
    ASSERT_TRUE(writeFromIconset(iconset, icnsPath));
    auto chunks = decode(bytesOf(test::readFile(icnsPath)));
    ASSERT_TRUE(chunks);
    EXPECT_EQ(typesOf(*chunks), (std::vector<std::string>{"icp4", "ic11", "icp5", "ic12", "ic07",
                                                          "ic13", "ic08", "ic14", "ic09", "ic10"}));
}

TEST_F(IconsetFolder, FilesOfTheWrongSizeOrNotPngAreLeftOut) {
    test::writePng(test::gradientImage(100, 100), iconset + "/icon_128x128.png");
    dir.write("x.iconset/icon_16x16.png", "not a picture");
    std::string icnsPath = dir / "AppIcon.icns";
    ASSERT_TRUE(writeFromIconset(iconset, icnsPath));
    auto chunks = decode(bytesOf(test::readFile(icnsPath)));
    ASSERT_TRUE(chunks);
    EXPECT_EQ(typesOf(*chunks),
              (std::vector<std::string>{"ic11", "ic13", "ic08", "ic14", "ic09", "ic10"}));
}

TEST_F(IconsetFolder, AnExistingFileIsReplaced) {
    std::string icnsPath = dir.write("AppIcon.icns", "old contents");
    ASSERT_TRUE(writeFromIconset(iconset, icnsPath));
    EXPECT_TRUE(decode(bytesOf(test::readFile(icnsPath))));
}

TEST(IcnsIconset, NothingUsableWritesNothing) {
    TempDir dir;
    dir.write("empty.iconset/readme.txt", "hello");
    EXPECT_FALSE(writeFromIconset(dir / "empty.iconset", dir / "a.icns"));
    EXPECT_FALSE(writeFromIconset(dir / "missing.iconset", dir / "b.icns"));
    EXPECT_FALSE(test::exists(dir / "a.icns"));
    EXPECT_FALSE(test::exists(dir / "b.icns"));
}

TEST_F(IconsetFolder, LoadLargestImageDecodesTheBiggestPicture) {
    std::string icnsPath = dir / "AppIcon.icns";
    ASSERT_TRUE(writeFromIconset(iconset, icnsPath));
    auto image = loadLargestImage(icnsPath);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->width(), 1024);
    EXPECT_EQ(image->height(), 1024);
    EXPECT_NEAR(image->getpoint(1023, 0)[0], 255, 2) << "pixels were decoded, not just sized";
}

TEST(IcnsIconset, LoadLargestImageRefusesWhatHoldsNoPicture) {
    TempDir dir;
    auto legacyOnly = encode({{"is32", bytesOf("raw bitmap bytes")}});
    std::string legacyPath =
        dir.write("legacy.icns", std::string(legacyOnly.begin(), legacyOnly.end()));
    EXPECT_FALSE(loadLargestImage(legacyPath));
    EXPECT_FALSE(loadLargestImage(dir.write("plain.icns", "plain text")));
    EXPECT_FALSE(loadLargestImage(dir / "missing.icns"));
    auto brokenPng = encode({{"ic10", bytesOf("\x89PNG\r\n\x1a\ngarbage")}});
    EXPECT_FALSE(loadLargestImage(
        dir.write("broken.icns", std::string(brokenPng.begin(), brokenPng.end()))));
}

} // namespace
} // namespace px::media::icns
