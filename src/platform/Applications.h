#pragma once

#include <string>
#include <vector>

namespace px::platform {

// The installed applications, found by name.
class Applications {
  public:
    virtual ~Applications() = default;
    // Starts the application called `appName` with the items (absolute paths; none starts it
    // on its own). False when no such application is installed or it could not be started.
    virtual bool openWithApplication(const std::string& appName,
                                     const std::vector<std::string>& paths) = 0;
    // Starts the application of an installed desktop entry ("pxmenu-settings.desktop"); false
    // when it is not installed or could not be started.
    virtual bool launchDesktopEntry(const std::string& desktopId) = 0;
};

} // namespace px::platform
