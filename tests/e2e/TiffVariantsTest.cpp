// "Convert to" on TIFF layouts that not every decoder takes: each readable one is converted,
// one that nothing reads is reported once.
#include "CliFixture.h"

using namespace px::test;

namespace {

void put16(std::string& out, unsigned value) {
    out += static_cast<char>(value & 0xff);
    out += static_cast<char>(value >> 8);
}
void put32(std::string& out, std::uint32_t value) {
    put16(out, value & 0xffff);
    put16(out, value >> 16);
}

// An old-style JPEG-in-TIFF (compression 6): the whole JPEG stream as the one strip, found
// through JPEGInterchangeFormat, as early scanners wrote them.
std::string oldStyleJpegTiff(const std::string& jpeg, unsigned width, unsigned height) {
    struct Entry {
        unsigned tag, type;
        std::uint32_t count, value;
    };
    const std::uint32_t entries = 12, bitsAt = 8 + 2 + entries * 12 + 4, jpegAt = bitsAt + 6;
    const auto size = static_cast<std::uint32_t>(jpeg.size());
    const std::vector<Entry> table{
        {256, 3, 1, width}, {257, 3, 1, height}, {258, 3, 3, bitsAt}, {259, 3, 1, 6},
        {262, 3, 1, 6},     {273, 4, 1, jpegAt}, {277, 3, 1, 3},      {278, 3, 1, height},
        {279, 4, 1, size},  {284, 3, 1, 1},      {513, 4, 1, jpegAt}, {514, 4, 1, size},
    };
    std::string out = "II*";
    out += '\0';
    put32(out, 8);
    put16(out, entries);
    for (const auto& entry : table) {
        put16(out, entry.tag);
        put16(out, entry.type);
        put32(out, entry.count);
        put32(out, entry.value); // a short in the low half, as little-endian files hold it
    }
    put32(out, 0);
    for (int sample = 0; sample < 3; ++sample)
        put16(out, 8);
    return out + jpeg;
}

class TiffVariantsTest : public CliFixture {
  protected:
    void SetUp() override { setUpMenus({"Convert to"}); }
    void magick(const Strings& options, const std::string& name) {
        Strings args{"convert", "-size", "64x48", "plasma:"};
        args.insert(args.end(), options.begin(), options.end());
        args.push_back(work / name);
        ASSERT_EQ(runProcess(args).exitStatus, 0) << name;
    }
};

TEST_F(TiffVariantsTest, ReadableLayoutsAreConvertedAndAnUnreadableOneIsReportedOnce) {
    magick({"-define", "tiff:tile-geometry=16x16", "-interlace", "plane"}, "tiled planar.tif");
    magick({"-define", "tiff:rows-per-strip=7"}, "seven rows.tif");
    magick({"-define", "tiff:rows-per-strip=100000"}, "one strip.tif");
    magick({"-sampling-factor", "1x1"}, "stream.jpg");
    work.write("old jpeg.tif", oldStyleJpegTiff(readFile(work / "stream.jpg"), 64, 48));
    work.write("damaged.tif", std::string("II*\0\x08\0\0\0\x01\0\x00\x01", 12));
    const Strings readable{"tiled planar", "seven rows", "one strip", "old jpeg"};
    Strings files;
    for (const auto& name : readable)
        files.push_back(work / (name + ".tif"));
    files.push_back(work / "damaged.tif");
    const ProcessResult result =
        runEntry({"Convert to", "BMP"}, request(0, work.path(), files), "button 1000\n");
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    for (const auto& name : readable) {
        SCOPED_TRACE(name);
        EXPECT_EQ(runProcess({"identify", "-format", "%m %wx%h", work / (name + ".bmp")}).out,
                  "BMP 64x48");
    }
    EXPECT_FALSE(exists(work / "damaged.bmp"));
    EXPECT_EQ(withKey(result.out, "prompt").size(), 1u) << result.out;
}

} // namespace
