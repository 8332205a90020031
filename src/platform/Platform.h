#pragma once

#include "platform/FinderSyncController.h"
#include "platform/Pasteboard.h"
#include "platform/Settings.h"
#include "platform/Ui.h"
#include "platform/Workspace.h"

#include <memory>

namespace px::platform {

// The desktop services the core calls, installed once by the host (the command line, the
// extension process, a plugin) or by a test. Members may be null where a host has none.
struct Platform {
    std::shared_ptr<Ui> ui;
    std::shared_ptr<Pasteboard> pasteboard;
    std::shared_ptr<Workspace> workspace;
    std::shared_ptr<FinderSyncController> controller;
    // The extension's own standard defaults ($XDG_CONFIG_HOME/pxmenu/extension.plist).
    std::shared_ptr<Settings> standardDefaults;
};

Platform& current();
void install(Platform platform);

// The installed Ui; a Ui that cancels everything when none is installed.
Ui& ui();
Pasteboard& pasteboard();
Workspace& workspace();
FinderSyncController& controller();
Settings& standardDefaults();

} // namespace px::platform
