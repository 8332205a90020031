#include "actions/PXTools.h"

#include "platform/Platform.h"
#include "support/Queues.h"

namespace px {

bool PXTools::runService(const std::string& serve, const std::vector<std::string>& fileURLs) {
    if (!queue::isMainThread()) return false;
    return platform::services().performService(serve, fileURLs);
}

} // namespace px
