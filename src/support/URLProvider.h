#pragma once

#include <optional>
#include <string>
#include <vector>

namespace px {

// A source of granted folders. URLs are plain absolute paths in this build.
class URLProvider {
  public:
    virtual ~URLProvider() = default;
    // The granted folders this source knows, in the order they are to be tried.
    virtual std::vector<std::string> availablePaths() = 0;
    // The usable location for exactly this granted folder, or nothing (unknown, stale).
    virtual std::optional<std::string> securityScopedURLForPath(const std::string& path) = 0;
};

} // namespace px
