#include "config/PXURLCache.h"

#include "config/Bookmark.h"
#include "support/FileHash.h"
#include "support/PathCoverage.h"
#include "support/ResolvedPath.h"

#include <algorithm>
#include <fmt/format.h>

namespace px {

namespace {

template <typename Map> void eraseCoveredKeys(Map& map, const std::string& grant) {
    std::erase_if(map, [&](const auto& entry) { return grantCovers(grant, entry.first); });
}

} // namespace

PXURLCache::PXURLCache(platform::Settings& suite) : m_suite(suite) {
    loadCachedBookmarks();
}

void PXURLCache::loadCachedBookmarks() {
    plist::Value stored = m_suite.objectForKey(cachedURLsKey);
    if (stored.isAbsent()) return;
    if (!stored.isDictionary()) {
        fmt::print(stderr,
                   "pxmenu: the granted folders under \"{}\" are not a dictionary; "
                   "they are ignored\n",
                   cachedURLsKey);
        return;
    }
    for (const auto& [path, bookmark] : stored.dictionary())
        m_cachedBookmarks.insert_or_assign(path, bookmark);
}

void PXURLCache::saveSecurityURL(const std::string& path) {
    if (!filehash::isValid(path) || m_cachedBookmarks.contains(path)) return;
    std::optional<plist::Value> bookmark = bookmark::create(path);
    if (!bookmark) return;
    removeCoveredBy(path);
    m_cachedBookmarks.insert_or_assign(path, *bookmark);
    // Remembered under the bookmark's resolution, which names the same folder here.
    if (auto resolution = bookmark::resolve(*bookmark)) m_cachedURLs[resolution->path] = path;
    persist();
}

void PXURLCache::removeCoveredBy(const std::string& path) {
    eraseCoveredKeys(m_cachedBookmarks, path);
    eraseCoveredKeys(m_cachedURLs, path);
}

void PXURLCache::removeCachedPath(const std::string& path) {
    auto found = std::ranges::find_if(
        m_cachedBookmarks, [&](const auto& entry) { return grantCovers(path, entry.first); });
    if (found == m_cachedBookmarks.end()) return;
    m_cachedURLs.erase(found->first);
    m_cachedBookmarks.erase(found);
    persist();
}

void PXURLCache::clearAllCached() {
    m_cachedBookmarks.clear();
    m_cachedURLs.clear();
    persist();
}

void PXURLCache::persist() {
    m_suite.setObject(cachedURLsKey, plist::Value::makeDictionary(m_cachedBookmarks));
}

std::optional<std::string> PXURLCache::urlWithAllowAccessToPath(const std::string& path) {
    if (!filehash::isValid(path)) return std::nullopt;
    const std::string resolved = resolveSymbolicLinks(path);
    for (const std::string& granted : availablePaths()) {
        if (!grantCovers(granted, resolved)) continue;
        if (auto url = securityScopedURLForPath(granted)) return url;
    }
    return std::nullopt;
}

std::vector<std::string> PXURLCache::availablePaths() const {
    std::vector<std::string> paths;
    paths.reserve(m_cachedBookmarks.size());
    for (const auto& entry : m_cachedBookmarks)
        paths.push_back(entry.first);
    return paths;
}

std::optional<std::string> PXURLCache::securityScopedURLForPath(const std::string& path) {
    if (auto known = m_cachedURLs.find(path); known != m_cachedURLs.end()) return known->second;
    auto stored = m_cachedBookmarks.find(path);
    if (stored == m_cachedBookmarks.end()) return std::nullopt;
    std::optional<bookmark::Resolution> resolution = bookmark::resolve(stored->second);
    if (!resolution || resolution->stale) return std::nullopt;
    m_cachedURLs[path] = resolution->path;
    return resolution->path;
}

} // namespace px
