#pragma once

#include "platform/Ui.h"

#include <cstddef>
#include <string>
#include <vector>

// Rules every Ui implementation shares, so that the dialogs, the terminal and the scripted
// prompts answer alike.
namespace px::platform {

inline constexpr int kFirstAlertButton = 1000;

// An alert without buttons shows one ("OK").
int alertButtonCount(const Ui::Alert& alert);
// The answer of an alert that is dismissed: the button titled (localized) "Cancel", else the
// last button.
int alertCancelResult(const Ui::Alert& alert);

// The question a save panel asks before it answers a path where something exists.
std::string overwriteQuestion(const std::string& path);

// A relative path typed into a panel is taken inside the panel's folder.
std::string resolvedPanelPath(const std::string& path, const std::string& directory);

} // namespace px::platform
