#pragma once

#include "platform/Settings.h"
#include "plist/Value.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace px {

// The folders the user has granted, kept as bookmarks under "px cached urls" in the extension's
// standard defaults, and the lookup that answers which grant covers a path. The whole grant
// dictionary is written back after every change. One per request, used on the main queue.
class PXURLCache final {
  public:
    static constexpr const char* cachedURLsKey = "px cached urls";

    // Reads the grants stored in the suite.
    explicit PXURLCache(platform::Settings& suite);
    PXURLCache(const PXURLCache&) = delete;
    PXURLCache& operator=(const PXURLCache&) = delete;

    // Records a grant for the folder, replacing the grants it covers. A blank path, one already
    // granted, and one that cannot be bookmarked (missing, relative) are ignored.
    void saveSecurityURL(const std::string& path);
    // Removes the first grant, in path order, that the path covers, if any: at most one per call.
    void removeCachedPath(const std::string& path);
    void clearAllCached();

    // The location of a grant covering the path (symbolic links in it resolved), or nothing.
    std::optional<std::string> urlWithAllowAccessToPath(const std::string& path);

    // The granted folders, and the resolved location of exactly one of them. A stale or
    // unreadable bookmark gives nothing and stays stored as it is.
    std::vector<std::string> availablePaths() const;
    std::optional<std::string> securityScopedURLForPath(const std::string& path);

  private:
    void loadCachedBookmarks();
    void removeCoveredBy(const std::string& path);
    void persist();

    platform::Settings& m_suite;
    plist::Dictionary m_cachedBookmarks;             // granted path -> bookmark data
    std::map<std::string, std::string> m_cachedURLs; // resolved during this request
};

} // namespace px
