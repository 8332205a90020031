#include "support/PathCoverage.h"

namespace px {

bool grantCovers(std::string_view granted, std::string_view path) {
    if (granted.empty() || !path.starts_with(granted)) return false;
    if (path.size() == granted.size() || granted == "/") return true;
    return path[granted.size()] == '/';
}

} // namespace px
