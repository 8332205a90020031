#pragma once

#include <string>
#include <vector>

namespace px::platform {

// The system services the actions hand items to by name: "New Terminal at Folder", "New
// Terminal Tab at Folder", "New iTerm2 Window Here" and "New iTerm2 Tab Here" open a terminal
// window or tab at each item's folder.
class Services {
  public:
    virtual ~Services() = default;
    // Performs the named service on the items (absolute paths); false when the service is
    // unknown, not installed here, or could not be started for some item.
    virtual bool performService(const std::string& name, const std::vector<std::string>& paths) = 0;
};

} // namespace px::platform
