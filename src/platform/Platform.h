#pragma once

#include "platform/Applications.h"
#include "platform/FinderSyncController.h"
#include "platform/Pasteboard.h"
#include "platform/Services.h"
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
    // Installed applications by name, and the system services (terminals). Initialised so
    // that hosts listing only the members above need not mention them.
    std::shared_ptr<Applications> applications = {};
    std::shared_ptr<Services> services = {};
};

Platform& current();
void install(Platform platform);

// The installed Ui; a Ui that cancels everything when none is installed.
Ui& ui();
Pasteboard& pasteboard();
Workspace& workspace();
FinderSyncController& controller();
Settings& standardDefaults();
// Stand-ins that refuse every request when a host installed none.
Applications& applications();
Services& services();

} // namespace px::platform
