#pragma once

#include "ListPage.h"

#include <QString>
#include <optional>

namespace px {
class PXMenuManager;
}

namespace px::settings {

class Prompts;

// Asks for what to add to a list (an application, a folder, a file or an image) and adds it
// to the store through the core. The message to show when it could not be added; nothing when it
// was added or the person cancelled.
std::optional<QString> addEntry(Adding adding, PXMenuManager& store, Prompts& prompts,
                                QWidget* parent);

} // namespace px::settings
