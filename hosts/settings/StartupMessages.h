#pragma once

#include "config/SettingsStartup.h"

class QWidget;

namespace px {
class PXMenuManager;
}

namespace px::settings {

class Prompts;

// What the window tells a person once it is shown: that the settings file was damaged (and
// where it was kept) and, on the first start, which factory application entries name
// applications that are not installed, offering to switch them off. True when anything was
// changed, so the window reloads.
bool showStartupMessages(const startup::SettingsStart& start, const PXMenuManager& store,
                         Prompts& prompts, QWidget* window);

} // namespace px::settings
