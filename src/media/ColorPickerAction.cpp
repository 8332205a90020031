// The colour picker menu action: the colour comes from the Ui's picker, the result dialog
// offers it as text.
#include "actions/Commands.h"
#include "media/ColorResult.h"
#include "platform/Platform.h"

namespace px::commands {

void pickColor(ActionContext& cx) {
    std::optional<platform::Ui::Color> color = cx.ui().pickColor();
    if (!color) return;
    colorresult::colorPickerChange(cx.request, *color);
}

} // namespace px::commands
