#pragma once

#include "platform/Applications.h"

#include <string>
#include <string_view>
#include <vector>

namespace px::platform {

// Applications found among the installed desktop entries and started through GIO, which reads
// the entry's Exec line into an argument vector itself: no shell is involved. An application
// is found by its exact Name, else by the desktop-file ids its name suggests, else by GIO's
// search over names, keywords and executables (best match first).
//
// GIO reads the desktop entries once per process: entries installed later are seen by the next
// process.
class GioApplications final : public Applications {
  public:
    bool openWithApplication(const std::string& appName,
                             const std::vector<std::string>& paths) override;
    bool launchDesktopEntry(const std::string& desktopId) override;
};

// The desktop-file ids tried for an application name, in order and without repeats:
// "<name>.desktop", then lower-cased, then lower-cased without blanks, then with blanks as
// dashes ("Visual Studio Code" gives "visualstudiocode.desktop", "visual-studio-code.desktop").
// None for a name that cannot be an id (empty, or holding a slash).
std::vector<std::string> desktopIdCandidates(std::string_view appName);

} // namespace px::platform
