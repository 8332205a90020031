#include "config/IconTheme.h"

#include "support/ReadScope.h"
#include "support_files/TestSupport.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <regex>
#include <set>

namespace px {
namespace {

using test::ScopedEnv;
using test::TempDir;

// Every resource name the menus and their generated entries use for a function or a file kind
// (the factory icons, the generated entries' icons, the new-file extensions and common types).
const std::vector<std::string> kThemedResources = {
    "newfile",  "favorites",  "app",      "foldericon", "script",   "copy",    "move",
    "convert",  "cut",        "lock",     "compress",   "embed",    "unembed", "colorpicker",
    "img",      "fileinfo",   "terminal", "iterm2",     "copypath", "delete",  "hidefile",
    "showfile", "about",      "set",      "add",        "paste",    "unlock",  "recover",
    "choose",   "showfinder", "more",     "folder",     "file",     "icon",    "txt",
    "rtf",      "json",       "docx",     "xlsx",       "pptx",     "pages",   "numbers",
    "key",      "md",         "wps",      "et",         "dps",      "html",    "xml",
    "css",      "js",         "py",       "sh",         "pdf",      "png",     "jpg"};

class IconThemeTest : public ::testing::Test {
  protected:
    TempDir m_data;
    ScopedEnv m_dataDir{"PXMENU_DATADIR", m_data.path()};
};

TEST_F(IconThemeTest, EveryFunctionAndFileKindHasAThemeIcon) {
    static const std::regex themeName("[a-z0-9]+(-[a-z0-9+]+)*");
    for (const auto& name : kThemedResources) {
        const auto reference = iconReferenceForResource(name);
        ASSERT_TRUE(reference) << name;
        EXPECT_TRUE(std::regex_match(*reference, themeName)) << name << ": " << *reference;
    }
}

TEST_F(IconThemeTest, ThemeNamesExistInTheInstalledTheme) {
    const std::filesystem::path theme = "/usr/share/icons/Adwaita";
    if (!std::filesystem::is_directory(theme)) GTEST_SKIP() << "no Adwaita theme here";
    std::set<std::string> available;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(theme)) {
        std::string stem = entry.path().filename().string();
        stem = stem.substr(0, stem.find('.'));
        if (stem.ends_with("-symbolic")) stem.resize(stem.size() - 9);
        available.insert(stem);
    }
    for (const auto& name : kThemedResources)
        EXPECT_TRUE(available.count(iconReferenceForResource(name).value_or("")))
            << name << " -> " << iconReferenceForResource(name).value_or("(none)");
}

TEST_F(IconThemeTest, WellKnownMappings) {
    EXPECT_EQ(iconReferenceForResource("delete"), "edit-delete");
    EXPECT_EQ(iconReferenceForResource("copy"), "edit-copy");
    EXPECT_EQ(iconReferenceForResource("folder"), "folder");
    EXPECT_EQ(iconReferenceForResource("terminal"), "utilities-terminal");
    EXPECT_EQ(iconReferenceForResource("docx"), "x-office-document");
    EXPECT_EQ(iconReferenceForResource("xlsx"), "x-office-spreadsheet");
    EXPECT_EQ(iconReferenceForResource("key"), "x-office-presentation");
    EXPECT_EQ(iconReferenceForResource("txt"), "text-x-generic");
}

TEST_F(IconThemeTest, PicturesWithoutThemeIconUseTheProjectArtworkWhenPresent) {
    EXPECT_FALSE(iconReferenceForResource("px-test-logo"));
    const auto artwork = m_data.write("icons/px-test-logo.svg", "<svg/>");
    EXPECT_EQ(iconReferenceForResource("px-test-logo"), artwork);
    m_data.write("icons/love.svg", "<svg/>");
    EXPECT_EQ(iconReferenceForResource("love"), m_data / "icons/love.svg");
}

TEST_F(IconThemeTest, EachReadScopeSeesArtworkAddedOrRemovedBeforeIt) {
    {
        ReadScope scope;
        EXPECT_FALSE(iconReferenceForResource("px-late-logo"));
    }
    const auto artwork = m_data.write("icons/px-late-logo.svg", "<svg/>");
    {
        ReadScope scope;
        EXPECT_EQ(iconReferenceForResource("px-late-logo"), artwork);
        EXPECT_EQ(iconReferenceForResource("px-late-logo"), artwork);
    }
    std::filesystem::remove(artwork);
    {
        ReadScope scope;
        EXPECT_FALSE(iconReferenceForResource("px-late-logo"));
    }
    ScopedEnv elsewhere("PXMENU_DATADIR", m_data / "other");
    const auto moved = m_data.write("other/icons/px-late-logo.svg", "<svg/>");
    ReadScope scope;
    EXPECT_EQ(iconReferenceForResource("px-late-logo"), moved);
}

TEST_F(IconThemeTest, ThemeIconsWinOverArtworkOfTheSameName) {
    m_data.write("icons/delete.svg", "<svg/>");
    EXPECT_EQ(iconReferenceForResource("delete"), "edit-delete");
}

TEST_F(IconThemeTest, NamesCannotReachOutsideTheIconsFolder) {
    m_data.write("secret.svg", "<svg/>");
    m_data.write("icons/.hidden.svg", "<svg/>");
    EXPECT_FALSE(iconReferenceForResource("../secret"));
    EXPECT_FALSE(iconReferenceForResource(m_data / "secret"));
    EXPECT_FALSE(iconReferenceForResource(".hidden"));
    EXPECT_FALSE(iconReferenceForResource(""));
}

TEST_F(IconThemeTest, UnknownNamesGiveNothing) {
    EXPECT_FALSE(iconReferenceForResource("xyz"));
    EXPECT_FALSE(iconReferenceForResource("DOCX")) << "names are matched exactly";
}

TEST_F(IconThemeTest, DataDirectoryIsTheFirstExistingFolder) {
    EXPECT_EQ(dataDirectory(), m_data.path());
    ScopedEnv missing("PXMENU_DATADIR", m_data / "missing");
    const auto fallback = dataDirectory();
    if (fallback) {
        EXPECT_NE(*fallback, m_data / "missing");
        EXPECT_TRUE(std::filesystem::is_directory(*fallback));
    }
}

} // namespace
} // namespace px
