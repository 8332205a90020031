#pragma once

#include "support/Localization.h"

#include <QString>

namespace px::gui {

// A text from the gettext catalogues, as Qt wants it.
inline QString tr(const char* key) {
    return QString::fromStdString(localized(key));
}
inline QString qs(const std::string& text) {
    return QString::fromStdString(text);
}

} // namespace px::gui
