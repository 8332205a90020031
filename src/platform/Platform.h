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

// The desktop services one request uses, made by the host (the command line, the extension
// process, a plugin) or by a test and handed down with the request. Members a host leaves
// null are filled with stand-ins by withStandIns().
struct Platform {
    std::shared_ptr<Ui> ui;
    std::shared_ptr<Pasteboard> pasteboard;
    std::shared_ptr<Workspace> workspace;
    std::shared_ptr<FinderSyncController> controller;
    // The extension's own standard defaults ($XDG_CONFIG_HOME/pxmenu/extension.plist).
    std::shared_ptr<Settings> standardDefaults;
    // Installed applications by name, and the system services (terminals).
    std::shared_ptr<Applications> applications = {};
    std::shared_ptr<Services> services = {};

    // A copy with every null member replaced: prompts that cancel, a pasteboard, workspace,
    // applications and services that refuse everything, an empty controller, and in-memory
    // standard defaults.
    Platform withStandIns() const;
};

} // namespace px::platform
