#pragma once

#include "config/Value.h"
#include "platform/Settings.h"
#include "support/URLProvider.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace px {

// The folders the user has granted, kept as bookmarks under "px cached urls" in a settings
// suite (the extension's standard defaults unless a suite name is set), and the lookup that
// answers which grant covers a path. The whole grant dictionary is written back after every
// change. Used from the main queue only.
class PXURLCache final : public URLProvider {
  public:
    static constexpr const char* cachedURLsKey = "px cached urls";

    // The process's cache, made on first use.
    static PXURLCache& sharedInstance();
    // Drops the shared cache so that the next sharedInstance() starts afresh (tests).
    static void resetForTesting();

    // A cache on the standard defaults (as setSuiteName("")). The process uses sharedInstance();
    // separate instances are for tests.
    PXURLCache();
    PXURLCache(const PXURLCache&) = delete;
    PXURLCache& operator=(const PXURLCache&) = delete;

    // A valid name opens $XDG_CONFIG_HOME/pxmenu/<name>.plist, anything else (empty, blank, a
    // name with "/") the standard defaults. Merges the grants stored there into the cache and
    // adds the cache to the providers once more on every call.
    void setSuiteName(const std::string& name);
    const std::string& suiteName() const { return m_suiteName; }

    // Providers are asked in the order added. They are not owned: a provider removes itself
    // before it goes. Removal takes out every entry of that very object.
    void addURLProvider(URLProvider& provider);
    void removeURLProvider(const URLProvider& provider);
    const std::vector<URLProvider*>& providers() const { return m_providers; }

    // Records a grant for the folder, replacing the grants it covers. A blank path, one already
    // granted, and one that cannot be bookmarked (missing, relative) are ignored.
    void saveSecurityURL(const std::string& url);
    // Removes the first grant, in path order, that the path covers, if any: at most one per call.
    void removeCachedPath(const std::string& path);
    void clearAllCached();

    // The location of a grant covering the path (symbolic links in it resolved), or nothing.
    std::optional<std::string> urlWithAllowAccessToPath(const std::string& path);
    std::optional<std::string> urlWithAllowAccessToURL(const std::string& url) {
        return urlWithAllowAccessToPath(url);
    }

    // URLProvider: the granted folders, and the resolved location of exactly one of them. A
    // stale or unreadable bookmark gives nothing and stays stored as it is.
    std::vector<std::string> availablePaths() override;
    std::optional<std::string> securityScopedURLForPath(const std::string& path) override;

  private:
    platform::Settings& userDefaults();
    void loadCachedBookmarks();
    void removeCoveredBy(const std::string& path);
    void persist();

    std::string m_suiteName;
    std::shared_ptr<platform::Settings> m_suite; // null: the standard defaults of the moment
    std::vector<URLProvider*> m_providers;
    plist::Dictionary m_cachedBookmarks;             // granted path -> bookmark data
    std::map<std::string, std::string> m_cachedURLs; // resolved during this process
};

} // namespace px
