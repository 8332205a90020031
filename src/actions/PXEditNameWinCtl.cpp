#include "actions/PXEditNameWinCtl.h"

#include "actions/FileHash.h"
#include "config/Localization.h"
#include "platform/Platform.h"

namespace px {

PXEditNameWinCtl::PXEditNameWinCtl()
    : tipLabelString(localized("Please enter a display name")),
      tipPlaceholder(localized("Without Display Name Tip")) {}

std::string PXEditNameWinCtl::initialText() const {
    return filehash::isValid(defaultAlias) ? defaultAlias : std::string();
}

void PXEditNameWinCtl::showWindow() {
    platform::Ui::NameRequest request{tipLabelString, tipPlaceholder, initialText(), required};
    for (;;) {
        auto entered = platform::ui().runNameEntry(request);
        if (!entered) return onCancel();
        if (onSure(*entered)) return;
        request.defaultText = *entered; // the window stays with what was typed
    }
}

bool PXEditNameWinCtl::onSure(const std::string& text) {
    if (required && !filehash::isValid(text)) return false;
    if (editHandler) editHandler(text);
    return true;
}

void PXEditNameWinCtl::onCancel() {
    if (cancelHandler) cancelHandler();
}

} // namespace px
