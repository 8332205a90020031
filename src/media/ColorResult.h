#pragma once

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
// `complete` is kept for the caller's sake but not called: a colour-panel observation that it
// would end stays in place, so that every later change shows the dialog again.
void colorPickerChange(const platform::Ui::Color& color, const std::function<void()>& complete);

} // namespace px::colorresult
