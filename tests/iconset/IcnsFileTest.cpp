#include "media/IcnsFile.h"

#include "IconTestSupport.h"

#include <gtest/gtest.h>

namespace px::media::icns {
namespace {

using test::TempDir;

std::vector<std::uint8_t> bytesOf(const std::string& text) {
    return {text.begin(), text.end()};
}

std::vector<std::string> typesOf(const std::vector<Chunk>& chunks) {
    std::vector<std::string> types;
    for (const Chunk& chunk : chunks)
        types.push_back(chunk.type);
    return types;
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

// Each file becomes its chunk as it is, smallest first, over whatever the file held before.
TEST_F(IconsetFolder, EveryFileBecomesItsChunkSmallestFirst) {
    std::string icnsPath = dir.write("AppIcon.icns", "old contents");
    ASSERT_TRUE(writeFromIconset(iconset, icnsPath));
    auto chunks = decode(bytesOf(test::readFile(icnsPath)));
    ASSERT_TRUE(chunks);
    EXPECT_EQ(typesOf(*chunks), (std::vector<std::string>{"icp4", "ic11", "ic07", "ic13", "ic08",
                                                          "ic14", "ic09", "ic10"}));
    EXPECT_EQ((*chunks)[0].data, bytesOf(test::readFile(iconset + "/icon_16x16.png")));
    EXPECT_EQ((*chunks)[7].data, bytesOf(test::readFile(iconset + "/icon_512x512@2x.png")));
}

// The 32-point files are taken when present; files of the wrong size or not PNG are left out.
TEST_F(IconsetFolder, OptionalFilesAreTakenAndUnfitOnesLeftOut) {
    test::writePng(test::gradientImage(32, 32), iconset + "/icon_32x32.png");
    test::writePng(test::gradientImage(64, 64), iconset + "/icon_32x32@2x.png");
    test::writePng(test::gradientImage(100, 100), iconset + "/icon_128x128.png");
    dir.write("x.iconset/icon_16x16.png", "not a picture");
    std::string icnsPath = dir / "AppIcon.icns";
    ASSERT_TRUE(writeFromIconset(iconset, icnsPath));
    auto chunks = decode(bytesOf(test::readFile(icnsPath)));
    ASSERT_TRUE(chunks);
    EXPECT_EQ(typesOf(*chunks), (std::vector<std::string>{"ic11", "icp5", "ic12", "ic13", "ic08",
                                                          "ic14", "ic09", "ic10"}));
}

TEST(IcnsIconset, NothingUsableWritesNothing) {
    TempDir dir;
    dir.write("empty.iconset/readme.txt", "hello");
    EXPECT_FALSE(writeFromIconset(dir / "empty.iconset", dir / "a.icns"));
    EXPECT_FALSE(writeFromIconset(dir / "missing.iconset", dir / "b.icns"));
    EXPECT_FALSE(test::exists(dir / "a.icns"));
    EXPECT_FALSE(test::exists(dir / "b.icns"));
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
