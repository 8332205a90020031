#include "media/ColorResult.h"

#include "ActionFixture.h"
#include "config/Localization.h"

namespace px::test {
namespace {

using Color = platform::Ui::Color;

TEST(ColorText, HexTruncatesWhileRgbRounds) {
    EXPECT_EQ(colorresult::hexText({1, 1, 1}, false), "FFFFFF");
    EXPECT_EQ(colorresult::hexText({1, 1, 1}, true), "#FFFFFF");
    EXPECT_EQ(colorresult::rgbText({1, 1, 1}), "255,255,255");
    EXPECT_EQ(colorresult::hexText({0, 0, 0}, true), "#000000");
    EXPECT_EQ(colorresult::rgbText({0, 0, 0}), "0,0,0");
    // 0.5 * 255 = 127.5: truncated to 7F, rounded to 128.
    EXPECT_EQ(colorresult::hexText({0.5, 0.5, 0.5}, false), "7F7F7F");
    EXPECT_EQ(colorresult::rgbText({0.5, 0.5, 0.5}), "128,128,128");
    // 0.999 * 255 = 254.745: FE, but 255 in decimal.
    EXPECT_EQ(colorresult::hexText({0.999, 0.002, 0.0039}, false), "FE0000");
    EXPECT_EQ(colorresult::rgbText({0.999, 0.002, 0.0039}), "255,1,1");
}

TEST(ColorText, EveryWholeComponentSurvivesTheRoundTrip) {
    for (int value = 0; value < 256; ++value) {
        Color color{value / 255.0, 0, (255 - value) / 255.0};
        char hex[8];
        std::snprintf(hex, sizeof hex, "%02X00%02X", value, 255 - value);
        EXPECT_EQ(colorresult::hexText(color, false), hex);
        EXPECT_EQ(colorresult::rgbText(color),
                  std::to_string(value) + ",0," + std::to_string(255 - value));
    }
}

TEST(ColorText, ComponentsOutsideTheUnitRangeAreClamped) {
    EXPECT_EQ(colorresult::hexText({1.2, -0.1, 0.5}, false), "FF007F");
    EXPECT_EQ(colorresult::rgbText({1.2, -0.1, 0.5}), "255,0,128");
}

class ColorResultDialogTest : public ActionFixture {};

TEST_F(ColorResultDialogTest, FirstButtonCopiesHexWithTheHashPreference) {
    suite->setBool("pref check6", true);
    ui->answer("button 1000");
    bool completed = false;
    colorresult::colorPickerChange({0.5, 1, 0}, [&] { completed = true; });
    ASSERT_EQ(ui->alerts().size(), 1u);
    const auto& alert = ui->alerts()[0];
    EXPECT_EQ(alert.message, "");
    EXPECT_EQ(alert.informative, "HEX\uFF1A#7FFF00\n\nRGB\uFF1A128,255,0");
    const std::string copy = localized("Copy");
    EXPECT_EQ(alert.buttons, (std::vector<std::string>{copy + " HEX", copy + " RGB"}));
    EXPECT_EQ(pasteboard->writes(), std::vector<std::string>{"#7FFF00"});
    EXPECT_FALSE(completed);
}

TEST_F(ColorResultDialogTest, SecondButtonOrCancelCopiesRgb) {
    ui->answers({"button 1001", "cancel"});
    colorresult::colorPickerChange({0, 0, 1}, {});
    EXPECT_EQ(ui->alerts().at(0).informative, "HEX\uFF1A0000FF\n\nRGB\uFF1A0,0,255");
    colorresult::colorPickerChange({1, 0, 0}, {});
    EXPECT_EQ(pasteboard->writes(), (std::vector<std::string>{"0,0,255", "255,0,0"}));
}

TEST_F(ColorResultDialogTest, PickerActionShowsThePickedColour) {
    ui->answers({"color 233 87 71", "button 1000"});
    sync->startColorPicker();
    EXPECT_EQ(ui->colorRequests(), 1);
    EXPECT_EQ(ui->alerts().at(0).informative, "HEX\uFF1AE95747\n\nRGB\uFF1A233,87,71");
    EXPECT_EQ(pasteboard->writes(), std::vector<std::string>{"E95747"});
}

TEST_F(ColorResultDialogTest, CancelledPickerShowsNothing) {
    ui->answer("cancel");
    sync->startColorPicker();
    EXPECT_EQ(ui->colorRequests(), 1);
    EXPECT_TRUE(ui->alerts().empty());
    EXPECT_TRUE(pasteboard->writes().empty());
}

} // namespace
} // namespace px::test
