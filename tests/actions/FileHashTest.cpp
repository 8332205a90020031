#include "support/FileHash.h"

#include "PrivilegeDrop.h"
#include "support/PXFile.h"
#include "support_files/TestSupport.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace px::filehash {
namespace {

using test::ScopedXdg;
using test::TempDir;

TEST(FileHashValid, BlankOrNullTextIsNotValid) {
    EXPECT_FALSE(isValid(nullptr));
    // Ideographic and no-break spaces are blanks too; stray bytes are text.
    for (const char* blank : {"", " \t\r\n", "\xE3\x80\x80\xC2\xA0", "(null)"})
        EXPECT_FALSE(isValid(blank)) << blank;
    for (const char* text : {" a ", "/tmp/x", "\xFF"})
        EXPECT_TRUE(isValid(text)) << text;
}

TEST(FileHashFolders, SystemFoldersFollowTheUserDirectories) {
    ScopedXdg env;
    std::string desk = env.home() + "/Schreibtisch";
    std::ofstream(env.configHome() + "/user-dirs.dirs")
        << "XDG_DESKTOP_DIR=\"$HOME/Schreibtisch\"\nXDG_MUSIC_DIR=\"/srv/music\"\n";
    for (const std::string& path : {std::string("/home"), std::string("/"), env.home(), desk,
                                    env.home() + "/Documents", std::string("/srv/music")})
        EXPECT_TRUE(isSystemFolder(path)) << path;
    for (const std::string& path : {desk + "/", env.home() + "/Desktop", std::string("/home/"),
                                    std::string("/usr/local"), env.home() + "/Music"})
        EXPECT_FALSE(isSystemFolder(path)) << path;
}

TEST(FileHashKinds, FolderLockAndWritable) {
    TempDir dir;
    std::string plain = dir.mkdir("plain"), text = dir.write("notes.txt", "x");
    std::string open = dir.write("rw.txt", "x");
    std::filesystem::create_directory_symlink(plain, dir / "link");
    EXPECT_TRUE(isFolder(plain));
    for (const std::string& path : {text, dir / "link", dir / "missing"})
        EXPECT_FALSE(isFolder(path) || isLocked(path)) << path;
    ::chmod(text.c_str(), 0444);
    ::chmod(open.c_str(), 0666);
    EXPECT_TRUE(isLocked(text));
    EXPECT_TRUE(
        test::checkUnprivileged(dir.path(), [&] { return !isWritable(text) && isWritable(open); }));
    EXPECT_FALSE(isWritable(dir / "missing") || isWritable(""));
}
TEST(FileHashCustomIcon, TheDirectoryFilesIconLine) {
    TempDir dir;
    const std::vector<std::pair<std::string, bool>> directoryFiles{
        {"[Desktop Entry]\r\nIcon = folder-red\r\n", true},
        {"[Desktop Entry]\nName=x\n[Other]\nIcon=folder-red\n", false},
        {"[Desktop Entry]\nIcon=\n", false},
        {"[Desktop Entry]\nIconic=yes\n", false},
    };
    int n = 0;
    for (const auto& [text, hasIcon] : directoryFiles) {
        const std::string folder = "f" + std::to_string(++n);
        dir.write(folder + "/.directory", text);
        EXPECT_EQ(hasCustomIcon(dir / (folder + "/")), hasIcon) << text;
    }
    EXPECT_FALSE(hasCustomIcon(dir / "missing"));

    // An unreachable session bus for the metadata store must give a prompt "no", not a hang.
    test::ScopedEnv bus("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + dir.path() + "/no-bus");
    EXPECT_FALSE(hasCustomIcon(dir.write("doc.txt", "x")));
}

TEST(FileHashRemove, RemovesTreesWithoutFollowingLinksAndRefusesDangerousPaths) {
    ScopedXdg env;
    TempDir dir;
    dir.write("tree/sub/deep/x.txt", "x");
    std::filesystem::create_directory_symlink(env.home(), dir / "tree/link-to-home");
    EXPECT_TRUE(remove(dir / "tree"));
    EXPECT_FALSE(std::filesystem::exists(dir / "tree"));
    for (const std::string& path :
         {dir / "tree", std::string(), env.home(), env.home() + "/", dir / "."})
        EXPECT_FALSE(remove(path)) << path;
    EXPECT_TRUE(std::filesystem::exists(env.home()));
    EXPECT_TRUE(std::filesystem::exists(dir.path()));

    std::string file = dir.write("was-a-file", "x");
    dir.write("full/inner.txt", "x");
    for (const std::string& path : {file, dir / "full", dir / "new/with/parents"}) {
        EXPECT_TRUE(createDir(path)) << path;
        EXPECT_TRUE(isFolder(path) && std::filesystem::is_empty(path)) << path;
    }
}

TEST(FileHashUniquePath, CountsFromOneBeforeTheLastExtensionAndTakesTheLowestFreeNumber) {
    TempDir dir;
    EXPECT_EQ(uniquePath(dir / "free.txt"), dir / "free.txt");
    const std::vector<std::pair<std::string, std::string>> cases{
        {"report.PDF", "report-1.PDF"},
        {"Makefile", "Makefile-1"},
        {".bashrc", ".bashrc-1"},
        {"a.tar.gz", "a.tar-1.gz"},
        {"my notes.v1 draft", "my notes.v1 draft-1"},
    };
    for (const auto& [name, unique] : cases)
        EXPECT_EQ(uniquePath(dir.write(name)), dir / unique);

    std::string original = dir.write("a.txt");
    dir.write("a-2.txt");
    EXPECT_EQ(uniquePath(original), dir / "a-1.txt");
    std::filesystem::create_symlink(dir / "nowhere", dir / "a-1.txt"); // a link occupies a name
    EXPECT_EQ(uniquePath(original), dir / "a-3.txt");
}

TEST(FileRecord, NamesExtensionAndAddressComeFromThePath) {
    PXFile report("/x/report.PDF");
    EXPECT_EQ(report.name(), "report");
    EXPECT_EQ(report.ext(), "pdf");
    EXPECT_EQ(report.folder(), "/x");
    EXPECT_EQ(PXFile("/x/a.tar.gz").name(), "a.tar");
    EXPECT_EQ(PXFile("/x/.bashrc").ext(), "");
    // The extension is lower-cased Unicode-wise; a trailing slash is no part of the name.
    EXPECT_EQ(PXFile(std::string("/x/pkg.\xC3\x84pp/")).ext(), std::string("\xC3\xA4") + "pp");
    EXPECT_EQ(PXFile("/x/a b#c%.txt").url(), "file:///x/a%20b%23c%25.txt");
    EXPECT_EQ(PXFile("relative.txt").url(), "");
}

} // namespace
} // namespace px::filehash
