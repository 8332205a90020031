#include "support/PXURLCache.h"

#include "PermitTestSupport.h"
#include "platform/linux/PlistFileSettings.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>

namespace px {
namespace {

using test::PermitTest;

class URLCacheTest : public PermitTest {
  protected:
    std::vector<std::string> granted() { return cache().availablePaths(); }
    PXURLCache& cache() { return PXURLCache::sharedInstance(); }
    plist::Value stored() { return defaults->objectForKey(PXURLCache::cachedURLsKey); }
};

TEST_F(URLCacheTest, AGrantCoversItsFolderAndWhatIsBelow) {
    std::string a = folder("a"), ab = folder("ab");
    cache().saveSecurityURL(a);
    EXPECT_EQ(cache().urlWithAllowAccessToPath(a), a);
    EXPECT_EQ(cache().urlWithAllowAccessToPath(a + "/deeper/file.txt"), a);
    EXPECT_EQ(cache().urlWithAllowAccessToPath(ab), std::nullopt);
    EXPECT_EQ(cache().urlWithAllowAccessToPath(""), std::nullopt);
    EXPECT_EQ(cache().urlWithAllowAccessToURL(a + "/x"), a);
}

TEST_F(URLCacheTest, TheRootGrantCoversEverythingAndReplacesNarrowerGrants) {
    cache().saveSecurityURL(folder("one"));
    cache().saveSecurityURL(folder("two/three"));
    cache().saveSecurityURL("/");
    EXPECT_EQ(granted(), std::vector<std::string>{"/"});
    EXPECT_EQ(cache().urlWithAllowAccessToPath("/usr/share"), "/");
    EXPECT_EQ(cache().urlWithAllowAccessToPath("/no/such/place"), "/");
    EXPECT_EQ(stored().dictionary().size(), 1u);
}

TEST_F(URLCacheTest, AWiderGrantReplacesOnlyTheGrantsItCovers) {
    std::string a = folder("a");
    std::string ab = folder("ab");
    cache().saveSecurityURL(folder("a/b"));
    cache().saveSecurityURL(ab);
    cache().saveSecurityURL(a);
    EXPECT_EQ(granted(), (std::vector<std::string>{a, ab}));
    ASSERT_TRUE(stored().isDictionary());
    EXPECT_EQ(stored().dictionary().size(), 2u);
    EXPECT_TRUE(stored().get(ab).isData());
}

TEST_F(URLCacheTest, IgnoresBlankDuplicateAndMissingFolders) {
    std::string a = folder("a");
    cache().saveSecurityURL(a);
    size_t writes = defaults->writeCount();
    cache().saveSecurityURL(a);
    cache().saveSecurityURL("   ");
    cache().saveSecurityURL(scratch / "missing");
    cache().saveSecurityURL("relative/folder");
    EXPECT_EQ(defaults->writeCount(), writes);
    EXPECT_EQ(granted(), std::vector<std::string>{a});
}

TEST_F(URLCacheTest, RemovingTakesAtMostOneCoveredGrant) {
    std::string b = folder("a/b"), c = folder("a/c"), other = folder("other");
    for (const auto& path : {b, c, other})
        cache().saveSecurityURL(path);
    cache().removeCachedPath(scratch / "a/b/below"); // covers nothing: the grant is above it
    EXPECT_EQ(granted().size(), 3u);
    cache().removeCachedPath(folder("a"));
    EXPECT_EQ(granted(), (std::vector<std::string>{c, other}));
    EXPECT_EQ(cache().urlWithAllowAccessToPath(b), std::nullopt);
    EXPECT_EQ(stored().dictionary().size(), 2u);
    cache().clearAllCached();
    EXPECT_TRUE(granted().empty());
    EXPECT_TRUE(stored().isDictionary() && stored().dictionary().empty());
    EXPECT_EQ(cache().urlWithAllowAccessToPath(other), std::nullopt);
}

TEST_F(URLCacheTest, MatchesAPathReachedThroughASymbolicLink) {
    std::string real = folder("real");
    std::filesystem::create_directory_symlink(real, scratch / "link");
    cache().saveSecurityURL(real);
    EXPECT_EQ(cache().urlWithAllowAccessToPath(scratch / "link/new-file.txt"), real);
    cache().clearAllCached();
    cache().saveSecurityURL(scratch / "link"); // the link itself, as a panel might give it
    EXPECT_EQ(cache().urlWithAllowAccessToPath(real), std::nullopt);
}

TEST_F(URLCacheTest, GrantsOutliveTheProcessInTheStandardDefaultsFile) {
    installPlatform(nullptr); // the real file under $XDG_CONFIG_HOME
    std::string granted = folder("kept");
    cache().saveSecurityURL(granted);

    platform::PlistFileSettings file(xdg.configHome() + "/pxmenu/extension.plist");
    plist::Value bookmark = file.objectForKey(PXURLCache::cachedURLsKey).get(granted);
    ASSERT_TRUE(bookmark.isData());
    EXPECT_EQ(std::string(bookmark.data().begin(), bookmark.data().end()), granted);

    PXURLCache::resetForTesting();
    installPlatform(nullptr);
    EXPECT_EQ(cache().urlWithAllowAccessToPath(granted + "/x"), granted);
}

TEST_F(URLCacheTest, AStaleGrantGivesNothingButStaysStored) {
    std::string gone = folder("gone");
    cache().saveSecurityURL(gone);
    PXURLCache::resetForTesting();
    std::filesystem::remove(gone);
    EXPECT_EQ(cache().urlWithAllowAccessToPath(gone + "/x"), std::nullopt);
    EXPECT_EQ(cache().securityScopedURLForPath(gone), std::nullopt);
    EXPECT_EQ(granted(), std::vector<std::string>{gone});
    std::filesystem::create_directory(gone); // back again: usable again
    EXPECT_EQ(cache().urlWithAllowAccessToPath(gone), gone);
}

TEST_F(URLCacheTest, KeepsStoredEntriesItCannotUse) {
    std::string usable = folder("usable");
    defaults->setObject(PXURLCache::cachedURLsKey,
                        plist::Value::makeDictionary({{"/junk", plist::Value("not data")},
                                                      {"/empty", plist::Value::makeData({})}}));
    PXURLCache::resetForTesting();
    EXPECT_EQ(cache().urlWithAllowAccessToPath("/junk/x"), std::nullopt);
    EXPECT_EQ(cache().urlWithAllowAccessToPath("/empty"), std::nullopt);
    cache().saveSecurityURL(usable);
    EXPECT_EQ(stored().get("/junk"), plist::Value("not data"));
    EXPECT_EQ(stored().dictionary().size(), 3u);
}

TEST_F(URLCacheTest, ReportsAndIgnoresAStoredValueThatIsNoDictionary) {
    defaults->setObject(PXURLCache::cachedURLsKey, plist::Value("broken"));
    PXURLCache::resetForTesting();
    testing::internal::CaptureStderr();
    EXPECT_TRUE(granted().empty());
    EXPECT_NE(testing::internal::GetCapturedStderr().find("px cached urls"), std::string::npos);
}

TEST_F(URLCacheTest, ANamedSuiteKeepsItsOwnGrants) {
    std::string granted = folder("named");
    PXURLCache own;
    own.setSuiteName("grants");
    own.saveSecurityURL(granted);
    EXPECT_EQ(own.suiteName(), "grants");
    EXPECT_TRUE(test::exists(xdg.configHome() + "/pxmenu/grants.plist"));
    EXPECT_TRUE(stored().isAbsent());

    PXURLCache reader;
    reader.setSuiteName("../escape");
    EXPECT_EQ(reader.suiteName(), "");
    EXPECT_EQ(reader.urlWithAllowAccessToPath(granted), std::nullopt);
    reader.setSuiteName("grants");
    EXPECT_EQ(reader.urlWithAllowAccessToPath(granted), granted);
}

class FixedProvider final : public URLProvider {
  public:
    explicit FixedProvider(std::string path) : m_path(std::move(path)) {}
    std::vector<std::string> availablePaths() override { return {m_path}; }
    std::optional<std::string> securityScopedURLForPath(const std::string& path) override {
        ++asked;
        return "provided:" + path;
    }
    int asked = 0;

  private:
    std::string m_path;
};

TEST_F(URLCacheTest, AsksProvidersInOrderAndRemovesThemByIdentity) {
    std::string mine = folder("mine");
    FixedProvider root("/"), same("/");
    cache().addURLProvider(root);
    cache().addURLProvider(same);
    cache().addURLProvider(root);
    cache().saveSecurityURL(mine);
    EXPECT_EQ(cache().urlWithAllowAccessToPath(mine), mine); // the cache itself comes first
    EXPECT_EQ(cache().urlWithAllowAccessToPath("/etc"), "provided:/");
    EXPECT_EQ(root.asked, 1);
    EXPECT_EQ(same.asked, 0);

    cache().removeURLProvider(root);
    EXPECT_EQ(cache().providers().size(), 2u);
    EXPECT_EQ(cache().urlWithAllowAccessToPath("/etc"), "provided:/");
    EXPECT_EQ(same.asked, 1);
    cache().removeURLProvider(same);
    EXPECT_EQ(cache().urlWithAllowAccessToPath("/etc"), std::nullopt);

    cache().setSuiteName("");
    EXPECT_EQ(std::ranges::count(cache().providers(), static_cast<URLProvider*>(&cache())), 2);
}

} // namespace
} // namespace px
