// The colour picker menu action: the colour comes from the Ui's picker, the result dialog
// offers it as text.
#include "extension/FinderSync.h"
#include "media/ColorResult.h"
#include "platform/Platform.h"

namespace px {

void FinderSync::startColorPicker() {
    std::optional<platform::Ui::Color> color = platform::ui().pickColor();
    if (!color) return;
    colorresult::colorPickerChange(*color, [this] { clean(); });
}

} // namespace px
