#include "actions/FileCreation.h"

#include "actions/IconThemeFiles.h"
#include "support_files/TestSupport.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace px;
using namespace px::test;
using creation::Existing;
using Names = std::vector<std::string>;

namespace {

TEST(FileCreationTest, OverlappingOrFailedCopiesAreRefusedAndLeaveNoHalfItem) {
    TempDir dir;
    dir.write("tpl/inside.txt", "in");
    std::filesystem::create_symlink(dir / "tpl", dir / "alias");
    for (const std::string& target : {dir / "tpl", dir / "tpl/copy", dir / "alias/copy"})
        EXPECT_TRUE(creation::copyItem(dir / "tpl", target, Existing::Replace).isError()) << target;
    EXPECT_TRUE(
        creation::copyItem(dir / "tpl/inside.txt", dir.path(), Existing::Replace).isError());
    EXPECT_EQ(listing(dir / "tpl"), Names{"inside.txt"});
    EXPECT_EQ(readFile(dir / "tpl/inside.txt"), "in");

    ASSERT_EQ(::mkfifo((dir / "tpl/pipe").c_str(), 0600), 0);
    EXPECT_TRUE(creation::copyItem(dir / "tpl", dir / "new", Existing::Keep).isError());
    EXPECT_TRUE(creation::writeFile(dir / "no/such/folder.txt", "x", Existing::Keep).isError());
    EXPECT_EQ(listing(dir.path()), (Names{"alias", "tpl"}));
}

// A theme in the user's icon folder: index.theme with the folders and empty icon files.
void theme(const std::string& root, const std::string& index, const Names& files) {
    std::filesystem::create_directories(root);
    std::ofstream(root + "/index.theme") << index;
    for (const auto& file : files) {
        std::filesystem::create_directories(std::filesystem::path(root + "/" + file).parent_path());
        std::ofstream(root + "/" + file) << "";
    }
}

TEST(IconThemeFilesTest, TheClosestSizeOfTheFirstThemeThatHasAName) {
    ScopedXdg xdg;
    const std::string icons = xdg.dataHome() + "/icons/";
    theme(icons + "PxParent",
          "[Icon Theme]\nName=P\nDirectories=32x32/mimetypes,64x64/mimetypes\n"
          "[32x32/mimetypes]\nSize=32\nType=Fixed\n[64x64/mimetypes]\nSize=64\nType=Fixed\n",
          {"32x32/mimetypes/px-test-doc.png", "64x64/mimetypes/px-test-doc.png",
           "32x32/mimetypes/px-test-generic.png"});
    theme(icons + "PxChild",
          "[Icon Theme]\nName=C\nInherits=PxParent\nDirectories=scalable/mimetypes\n"
          "[scalable/mimetypes]\nSize=16\nMinSize=8\nMaxSize=512\nType=Scalable\n",
          {"scalable/mimetypes/px-test-generic.svg"});
    EXPECT_EQ(icontheme::findIconFile({"px-test-doc"}, 60), std::nullopt);

    std::filesystem::create_directories(xdg.configHome() + "/gtk-3.0");
    std::ofstream(xdg.configHome() + "/gtk-3.0/settings.ini")
        << "[Settings]\ngtk-icon-theme-name=PxChild\n";
    EXPECT_EQ(icontheme::findIconFile({"px-test-doc"}, 60),
              icons + "PxParent/64x64/mimetypes/px-test-doc.png");
    EXPECT_EQ(icontheme::findIconFile({"px-test-doc"}, 30),
              icons + "PxParent/32x32/mimetypes/px-test-doc.png");
    // Themes come first, names second: the child's generic icon wins over the parent's specific
    // one.
    EXPECT_EQ(icontheme::findIconFile({"px-test-doc", "px-test-generic"}, 60),
              icons + "PxChild/scalable/mimetypes/px-test-generic.svg");
    EXPECT_EQ(icontheme::findIconFile({"../PxParent/32x32/mimetypes/px-test-doc", "px-none"}, 60),
              std::nullopt);
}

} // namespace
