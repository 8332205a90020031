#include "actions/PXTools.h"

#include "support/Queues.h"

namespace px {

bool PXTools::runService(platform::Services& services, const std::string& serve,
                         const std::vector<std::string>& paths) {
    if (!queue::isMainThread()) return false;
    return services.performService(serve, paths);
}

} // namespace px
