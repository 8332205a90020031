#include "media/ColorResult.h"

#include <gtest/gtest.h>

namespace px::test {
namespace {

TEST(ColorText, HexTruncatesRgbRoundsAndBothClamp) {
    EXPECT_EQ(colorresult::hexText({1, 1, 1}, false), "FFFFFF");
    EXPECT_EQ(colorresult::hexText({0, 0, 0}, true), "#000000");
    EXPECT_EQ(colorresult::rgbText({0, 0, 0}), "0,0,0");
    // 0.5 * 255 = 127.5: truncated to 7F, rounded to 128.
    EXPECT_EQ(colorresult::hexText({0.5, 0.5, 0.5}, false), "7F7F7F");
    EXPECT_EQ(colorresult::rgbText({0.5, 0.5, 0.5}), "128,128,128");
    // 0.999 * 255 = 254.745: FE, but 255 in decimal.
    EXPECT_EQ(colorresult::hexText({0.999, 0.002, 0.0039}, false), "FE0000");
    EXPECT_EQ(colorresult::rgbText({0.999, 0.002, 0.0039}), "255,1,1");
    EXPECT_EQ(colorresult::hexText({1.2, -0.1, 0.5}, false), "FF007F");
    EXPECT_EQ(colorresult::rgbText({1.2, -0.1, 0.5}), "255,0,128");
}

} // namespace
} // namespace px::test
