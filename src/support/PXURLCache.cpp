#include "support/PXURLCache.h"

#include "actions/FileHash.h"
#include "platform/Platform.h"
#include "platform/linux/PlistFileSettings.h"
#include "support/Bookmark.h"
#include "support/PathCoverage.h"
#include "support/ResolvedPath.h"
#include "support/Xdg.h"

#include <algorithm>
#include <fmt/format.h>
#include <mutex>

namespace px {

namespace {

std::mutex& sharedMutex() {
    static std::mutex instance;
    return instance;
}

std::unique_ptr<PXURLCache>& sharedSlot() {
    static std::unique_ptr<PXURLCache> instance;
    return instance;
}

bool isValidSuiteName(const std::string& name) {
    return filehash::isValid(name) && name.find('/') == std::string::npos && name != "." &&
           name != "..";
}

template <typename Map> void eraseCoveredKeys(Map& map, const std::string& grant) {
    std::erase_if(map, [&](const auto& entry) { return grantCovers(grant, entry.first); });
}

} // namespace

PXURLCache& PXURLCache::sharedInstance() {
    std::lock_guard guard(sharedMutex());
    auto& slot = sharedSlot();
    if (!slot) slot = std::make_unique<PXURLCache>();
    return *slot;
}

void PXURLCache::resetForTesting() {
    std::lock_guard guard(sharedMutex());
    sharedSlot().reset();
}

PXURLCache::PXURLCache() {
    setSuiteName("");
}

void PXURLCache::setSuiteName(const std::string& name) {
    if (isValidSuiteName(name)) {
        m_suiteName = name;
        m_suite = std::make_shared<platform::PlistFileSettings>(xdg::settingsFolder() + "/" + name +
                                                                ".plist");
    } else {
        m_suiteName.clear();
        m_suite.reset();
    }
    loadCachedBookmarks();
    addURLProvider(*this);
}

platform::Settings& PXURLCache::userDefaults() {
    return m_suite ? *m_suite : platform::standardDefaults();
}

void PXURLCache::loadCachedBookmarks() {
    plist::Value stored = userDefaults().objectForKey(cachedURLsKey);
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

void PXURLCache::addURLProvider(URLProvider& provider) {
    m_providers.push_back(&provider);
}

void PXURLCache::removeURLProvider(const URLProvider& provider) {
    std::erase(m_providers, &provider);
}

void PXURLCache::saveSecurityURL(const std::string& url) {
    if (!filehash::isValid(url) || m_cachedBookmarks.contains(url)) return;
    std::optional<plist::Value> bookmark = bookmark::create(url);
    if (!bookmark) return;
    removeCoveredBy(url);
    m_cachedBookmarks.insert_or_assign(url, *bookmark);
    // Remembered under the bookmark's resolution, which names the same folder here.
    if (auto resolution = bookmark::resolve(*bookmark)) m_cachedURLs[resolution->path] = url;
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
    userDefaults().setObject(cachedURLsKey, plist::Value::makeDictionary(m_cachedBookmarks));
}

std::optional<std::string> PXURLCache::urlWithAllowAccessToPath(const std::string& path) {
    if (!filehash::isValid(path)) return std::nullopt;
    const std::string resolved = resolveSymbolicLinks(path);
    // A copy: a provider may add or remove providers while it is asked.
    const std::vector<URLProvider*> providers = m_providers;
    for (URLProvider* provider : providers) {
        for (const std::string& granted : provider->availablePaths()) {
            if (!grantCovers(granted, resolved)) continue;
            if (auto url = provider->securityScopedURLForPath(granted)) return url;
        }
    }
    return std::nullopt;
}

std::vector<std::string> PXURLCache::availablePaths() {
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
