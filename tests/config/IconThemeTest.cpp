#include "config/IconTheme.h"

#include "support/ReadScope.h"
#include "support_files/TestSupport.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <set>

namespace px {
namespace {

using test::ScopedEnv;
using test::TempDir;

class IconThemeTest : public ::testing::Test {
  protected:
    TempDir m_data;
    ScopedEnv m_dataDir{"PXMENU_DATADIR", m_data.path()};
};

// Every resource name the menus use for a function or a file kind must name an icon the
// installed theme has.
TEST_F(IconThemeTest, EveryFunctionAndFileKindHasAnIconInTheInstalledTheme) {
    const std::filesystem::path theme = "/usr/share/icons/Adwaita";
    if (!std::filesystem::is_directory(theme)) GTEST_SKIP() << "no Adwaita theme here";
    std::set<std::string> available;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(theme)) {
        std::string stem = entry.path().filename().string();
        stem = stem.substr(0, stem.find('.'));
        if (stem.ends_with("-symbolic")) stem.resize(stem.size() - 9);
        available.insert(stem);
    }
    for (const char* name :
         {"newfile",  "favorites",  "app",      "foldericon", "script",   "copy",    "move",
          "convert",  "cut",        "lock",     "compress",   "embed",    "unembed", "colorpicker",
          "img",      "fileinfo",   "terminal", "iterm2",     "copypath", "delete",  "hidefile",
          "showfile", "about",      "set",      "add",        "paste",    "unlock",  "recover",
          "choose",   "showfinder", "more",     "folder",     "file",     "icon",    "txt",
          "rtf",      "json",       "docx",     "xlsx",       "pptx",     "pages",   "numbers",
          "key",      "md",         "wps",      "et",         "dps",      "html",    "xml",
          "css",      "js",         "py",       "sh",         "pdf",      "png",     "jpg"})
        EXPECT_TRUE(available.count(iconReferenceForResource(name).value_or("")))
            << name << " -> " << iconReferenceForResource(name).value_or("(none)");
}

TEST_F(IconThemeTest, ArtworkStandsInForMissingThemeIconsFromTheDataFolderInUse) {
    m_data.write("icons/delete.svg", "<svg/>");
    EXPECT_EQ(iconReferenceForResource("delete"), "edit-delete") << "the theme wins";
    ScopedEnv elsewhere("PXMENU_DATADIR", m_data / "other");
    const auto artwork = m_data.write("other/icons/px-logo.svg", "<svg/>");
    ReadScope scope;
    EXPECT_EQ(iconReferenceForResource("px-logo"), artwork);
}

TEST_F(IconThemeTest, NamesCannotReachOutsideTheIconsFolder) {
    m_data.write("secret.svg", "<svg/>");
    m_data.write("icons/.hidden.svg", "<svg/>");
    for (const std::string& name : {std::string("../secret"), m_data / "secret",
                                    std::string(".hidden"), std::string(""), std::string("DOCX")})
        EXPECT_FALSE(iconReferenceForResource(name)) << name;
}

} // namespace
} // namespace px
