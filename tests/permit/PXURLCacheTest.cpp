#include "config/PXURLCache.h"

#include "PermitTestSupport.h"
#include "platform/linux/PlistFileSettings.h"

namespace px {
namespace {

using Paths = std::vector<std::string>;

class URLCacheTest : public test::PermitTest {
  protected:
    Paths granted() { return cache().availablePaths(); }
    std::optional<std::string> grantFor(const std::string& path) {
        return cache().urlWithAllowAccessToPath(path);
    }
    plist::Value stored() { return defaults->objectForKey(PXURLCache::cachedURLsKey); }
};

TEST_F(URLCacheTest, AGrantCoversItsFolderAndBelowAndAWiderGrantReplacesTheOnesItCovers) {
    std::string a = folder("a"), ab = folder("ab");
    cache().saveSecurityURL(folder("a/b"));
    cache().saveSecurityURL(ab);
    cache().saveSecurityURL(a);
    EXPECT_EQ(granted(), (Paths{a, ab}));
    EXPECT_EQ(stored().dictionary().size(), 2u);
    EXPECT_TRUE(stored().get(ab).isData());
    EXPECT_EQ(grantFor(a + "/deeper/file.txt"), a);
    EXPECT_EQ(grantFor(ab), ab);
    EXPECT_EQ(grantFor(scratch / "abc"), std::nullopt);
    EXPECT_EQ(grantFor(""), std::nullopt);

    cache().saveSecurityURL("/");
    EXPECT_EQ(granted(), Paths{"/"});
    EXPECT_EQ(grantFor("/no/such/place"), "/");
    EXPECT_EQ(stored().dictionary().size(), 1u);
}

TEST_F(URLCacheTest, IgnoresBlankDuplicateMissingAndRelativeFolders) {
    std::string a = folder("a");
    cache().saveSecurityURL(a);
    size_t writes = defaults->writeCount();
    for (const auto& path : {a, std::string("   "), scratch / "missing", std::string("relative")})
        cache().saveSecurityURL(path);
    EXPECT_EQ(defaults->writeCount(), writes);
    EXPECT_EQ(granted(), Paths{a});
}

TEST_F(URLCacheTest, MatchesAPathReachedThroughASymbolicLinkAndSurvivesLinkLoops) {
    std::string real = folder("real");
    std::filesystem::create_directory_symlink(real, scratch / "link");
    std::filesystem::create_symlink(scratch / "loop", scratch / "loop");
    const std::string root = std::filesystem::canonical(scratch.path());
    cache().saveSecurityURL(root);
    EXPECT_EQ(grantFor(scratch / "loop/x"), root);
    cache().clearAllCached();
    cache().saveSecurityURL(real);
    EXPECT_EQ(grantFor(scratch / "link/new-file.txt"), real);
    cache().clearAllCached();
    cache().saveSecurityURL(scratch / "link"); // the link itself, as a panel might give it
    EXPECT_EQ(grantFor(real), std::nullopt);
}

TEST_F(URLCacheTest, GrantsOutliveTheProcessInTheStandardDefaultsFile) {
    reopen(std::make_shared<platform::PlistFileSettings>(xdg.configHome() +
                                                         "/pxmenu/extension.plist"));
    std::string kept = folder("kept");
    cache().saveSecurityURL(kept);
    platform::PlistFileSettings file(xdg.configHome() + "/pxmenu/extension.plist");
    plist::Value bookmark = file.objectForKey(PXURLCache::cachedURLsKey).get(kept);
    ASSERT_TRUE(bookmark.isData());
    EXPECT_EQ(std::string(bookmark.data().begin(), bookmark.data().end()), kept);

    reopen();
    EXPECT_EQ(grantFor(kept + "/x"), kept);
}

TEST_F(URLCacheTest, AStaleGrantGivesNothingButStaysStored) {
    std::string gone = folder("gone");
    cache().saveSecurityURL(gone);
    reopen();
    std::filesystem::remove(gone);
    EXPECT_EQ(grantFor(gone + "/x"), std::nullopt);
    EXPECT_EQ(cache().securityScopedURLForPath(gone), std::nullopt);
    EXPECT_EQ(granted(), Paths{gone});
    std::filesystem::create_directory(gone); // back again: usable again
    EXPECT_EQ(grantFor(gone), gone);
}

TEST_F(URLCacheTest, DamagedStoredValuesAreReportedOrKeptButNeverUsed) {
    defaults->setObject(PXURLCache::cachedURLsKey, plist::Value("broken"));
    reopen();
    testing::internal::CaptureStderr();
    EXPECT_TRUE(granted().empty());
    EXPECT_NE(testing::internal::GetCapturedStderr().find("px cached urls"), std::string::npos);

    defaults->setObject(PXURLCache::cachedURLsKey,
                        plist::Value::makeDictionary({{"/junk", plist::Value("not data")},
                                                      {"/empty", plist::Value::makeData({})}}));
    reopen();
    EXPECT_EQ(grantFor("/junk/x"), std::nullopt);
    EXPECT_EQ(grantFor("/empty"), std::nullopt);
    cache().saveSecurityURL(folder("usable"));
    EXPECT_EQ(stored().get("/junk"), plist::Value("not data"));
    EXPECT_EQ(stored().dictionary().size(), 3u);
}

} // namespace
} // namespace px
