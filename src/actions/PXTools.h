#pragma once

#include "platform/Services.h"

#include <string>
#include <vector>

namespace px {

// Stateless services the actions share.
class PXTools {
  public:
    // Performs the named system service (a terminal at each item's folder) on the items. Only
    // on the main queue: from any other thread nothing happens and the answer is false.
    // Otherwise the platform's answer.
    static bool runService(platform::Services& services, const std::string& serve,
                           const std::vector<std::string>& paths);
};

} // namespace px
