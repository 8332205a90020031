#include "media/ColorResult.h"

#include "config/PXMenuManager.h"
#include "support/FileHash.h"
#include "support/Localization.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace px::colorresult {

namespace {

// A component times 255; components outside 0...1 (extended colour spaces) are clamped first.
double scaled(double component) {
    if (std::isnan(component)) return 0;
    return std::clamp(component, 0.0, 1.0) * 255;
}

std::string printed(const char* format, auto... values) {
    char text[64];
    int size = std::snprintf(text, sizeof text, format, values...);
    return std::string(text, static_cast<std::size_t>(std::clamp(size, 0, 63)));
}

} // namespace

std::string hexText(const platform::Ui::Color& color, bool withHash) {
    return printed("%s%02X%02X%02X", withHash ? "#" : "", static_cast<int>(scaled(color.red)),
                   static_cast<int>(scaled(color.green)), static_cast<int>(scaled(color.blue)));
}

std::string rgbText(const platform::Ui::Color& color) {
    return printed("%.0f,%.0f,%.0f", scaled(color.red), scaled(color.green), scaled(color.blue));
}

void colorPickerChange(const Request& request, const platform::Ui::Color& color) {
    const std::string hex = hexText(color, request.preferences().boolForKey("pref check6"));
    const std::string rgb = rgbText(color);
    const std::string copy = localized("Copy");
    platform::Ui::Alert alert{
        "", "HEX\uFF1A" + hex + "\n\nRGB\uFF1A" + rgb, {copy + " HEX", copy + " RGB"}};
    const bool firstButton = request.ui().runAlert(alert) == 1000;
    request.pasteboard().copyTrimmed(firstButton ? hex : rgb);
}

} // namespace px::colorresult
