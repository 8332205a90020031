#pragma once

#include "config/PXMenuManager.h"
#include "platform/Settings.h"

#include <memory>

// The current user's settings files and data folder, as hosts open them.
namespace px::platform {

// The menu store on $XDG_CONFIG_HOME/pxmenu/group.plist and $XDG_DATA_HOME/pxmenu.
std::shared_ptr<PXMenuManager> openUserStore();
// The extension's standard defaults, $XDG_CONFIG_HOME/pxmenu/extension.plist.
std::shared_ptr<Settings> openStandardDefaults();

} // namespace px::platform
