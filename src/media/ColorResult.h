#pragma once

#include "extension/Request.h"
#include "platform/Ui.h"

#include <functional>
#include <string>

// The picked colour as text, and the dialog that offers to copy it.
namespace px::colorresult {

// "RRGGBB" in upper-case hexadecimal, each component times 255 truncated to an integer
// (0.5 gives "7F"), with "#" in front when `withHash` is set.
std::string hexText(const platform::Ui::Color& color, bool withHash);
// "R,G,B" in decimal, each component times 255 rounded (0.5 gives "128").
std::string rgbText(const platform::Ui::Color& color);

// Shows both texts in one alert with the buttons "Copy HEX" and "Copy RGB" (localised "Copy")
// and copies the text of the button chosen: the hexadecimal text for the first, the decimal
// text otherwise. The "#" follows the preference "pref check6" of the shared suite.
void colorPickerChange(const Request& request, const platform::Ui::Color& color);

} // namespace px::colorresult
