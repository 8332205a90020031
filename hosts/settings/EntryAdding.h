#pragma once

#include "ListPage.h"

#include <QString>
#include <optional>

namespace px::settings {

class Prompts;

// Asks for what to add to a list (an application, a folder, a file or an image) and adds it
// through the core. The message to show when it could not be added; nothing when it was added
// or the person cancelled.
std::optional<QString> addEntry(Adding adding, Prompts& prompts, QWidget* parent);

} // namespace px::settings
