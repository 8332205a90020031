#include "actions/FileHash.h"

#include "PrivilegeDrop.h"
#include "platform/fake/FakePasteboard.h"
#include "support_files/TestSupport.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <gio/gio.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace px::filehash {
namespace {

using test::ScopedXdg;
using test::TempDir;

// The start of a PNG file: the signature and the image header chunk, which is what sniffing
// looks at.
const std::string kPngBytes("\x89PNG\r\n\x1a\n\0\0\0\x0dIHDR\0\0\0\x01\0\0\0\x01\x08\x06\0\0\0",
                            29);

TEST(FileHashValid, BlankOrNullTextIsNotValid) {
    EXPECT_FALSE(isValid(nullptr));
    EXPECT_FALSE(isValid(""));
    EXPECT_FALSE(isValid("   "));
    EXPECT_FALSE(isValid(" \t\r\n"));
    EXPECT_FALSE(isValid("\xE3\x80\x80\xC2\xA0")); // ideographic and no-break spaces
    EXPECT_FALSE(isValid("(null)"));
    EXPECT_TRUE(isValid(" a "));
    EXPECT_TRUE(isValid(std::string("/tmp/x")));
    EXPECT_TRUE(isValid("\xFF")); // stray bytes are text, not blanks
}

TEST(FileHashSystemFolder, ProtectedFoldersFollowTheUserDirectories) {
    ScopedXdg env;
    std::string desk = env.home() + "/Schreibtisch";
    std::ofstream(env.configHome() + "/user-dirs.dirs")
        << "XDG_DESKTOP_DIR=\"$HOME/Schreibtisch\"\nXDG_MUSIC_DIR=\"/srv/music\"\n";

    for (const std::string& path :
         {std::string("/home"), std::string("/"), env.home(), desk, env.home() + "/Documents",
          std::string("/srv/music"), std::string("/usr"), std::string("/mnt")})
        EXPECT_TRUE(isSystemFolder(path)) << path;
    for (const std::string& path : {desk + "/", env.home() + "/Desktop", std::string("/home/"),
                                    std::string("/usr/local"), env.home() + "/Music"})
        EXPECT_FALSE(isSystemFolder(path)) << path;
    EXPECT_EQ(systemFolders().size(), 14u);

    EXPECT_TRUE(isDesktop(desk));
    EXPECT_FALSE(isDesktop(desk + "/"));
    EXPECT_FALSE(isDesktop(env.home() + "/Desktop"));
}

TEST(FileHashKinds, FolderPackageAndLock) {
    TempDir dir;
    std::string bundle = dir.mkdir("Photos.bundle");
    std::string plain = dir.mkdir("plain");
    std::string text = dir.write("notes.txt", "x");
    std::filesystem::create_directory_symlink(bundle, dir / "link.bundle");

    EXPECT_TRUE(isFolder(plain));
    EXPECT_FALSE(isFolder(text));
    EXPECT_FALSE(isFolder(dir / "link.bundle"));
    EXPECT_FALSE(isFolder(dir / "missing"));
    EXPECT_TRUE(isPackage(bundle));
    EXPECT_FALSE(isPackage(plain));
    EXPECT_FALSE(isPackage(text));
    EXPECT_FALSE(isPackage(dir / "link.bundle"));

    ::chmod(text.c_str(), 0444);
    EXPECT_TRUE(isLocked(text));
    ::chmod(text.c_str(), 0644);
    EXPECT_FALSE(isLocked(text));
    EXPECT_FALSE(isLocked(dir / "missing"));
}

TEST(FileHashKinds, WritableFollowsThePermissionsOfTheProcess) {
    TempDir dir;
    std::string readOnly = dir.write("ro.txt", "x");
    std::string open = dir.write("rw.txt", "x");
    ::chmod(readOnly.c_str(), 0444);
    ::chmod(open.c_str(), 0666);
    EXPECT_TRUE(test::checkUnprivileged(dir.path(),
                                        [&] { return !isWritable(readOnly) && isWritable(open); }));
    EXPECT_FALSE(isWritable(dir / "missing"));
    EXPECT_FALSE(isWritable(""));
}

TEST(FileHashImage, ContentTypeDecidesAndLookupFailuresAreNo) {
    TempDir dir;
    EXPECT_TRUE(isImage(dir.write("shot.png", kPngBytes)));
    EXPECT_TRUE(isImage(dir.write("noextension", kPngBytes)));
    EXPECT_TRUE(isImage(dir.write("photo.JPG", "")));
    EXPECT_FALSE(isImage(dir.write("notes.txt", "hello")));
    EXPECT_FALSE(isImage(dir.mkdir("pictures.png")));
    EXPECT_FALSE(isImage(dir / "ghost.png"));
    EXPECT_FALSE(isImage(""));

    // A pipe with a name that says nothing must not be opened for sniffing (it would block).
    ASSERT_EQ(::mkfifo((dir / "pipe").c_str(), 0600), 0);
    auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(isImage(dir / "pipe"));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

TEST(FileHashCustomIcon, DirectoryFileIconLine) {
    TempDir dir;
    std::string withIcon = dir.mkdir("a");
    dir.write("a/.directory", "[Desktop Entry]\r\nIcon = folder-red\r\n");
    std::string otherGroup = dir.mkdir("b");
    dir.write("b/.directory", "[Desktop Entry]\nName=x\n[Other]\nIcon=folder-red\n");
    std::string emptyIcon = dir.mkdir("c");
    dir.write("c/.directory", "[Desktop Entry]\nIcon=\n");
    std::string iconic = dir.mkdir("d");
    dir.write("d/.directory", "[Desktop Entry]\nIconic=yes\n");

    EXPECT_TRUE(hasCustomIcon(withIcon));
    EXPECT_TRUE(hasCustomIcon(withIcon + "/"));
    EXPECT_FALSE(hasCustomIcon(otherGroup));
    EXPECT_FALSE(hasCustomIcon(emptyIcon));
    EXPECT_FALSE(hasCustomIcon(iconic));
    EXPECT_FALSE(hasCustomIcon(dir.mkdir("plain")));
    EXPECT_FALSE(hasCustomIcon(dir.write("file.txt")));
    EXPECT_FALSE(hasCustomIcon(dir / "missing"));
}

TEST(FileHashCustomIcon, MetadataAttribute) {
    TempDir dir;
    std::string file = dir.write("doc.txt", "x");
    {
        // An unreachable session bus must give a prompt "no", not a hang or a crash.
        test::ScopedEnv bus("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + dir.path() + "/no-bus");
        EXPECT_FALSE(hasCustomIcon(file));
    }
    GFile* gfile = g_file_new_for_path(file.c_str());
    gboolean stored = g_file_set_attribute_string(gfile, "metadata::custom-icon", "file:///x.png",
                                                  G_FILE_QUERY_INFO_NONE, nullptr, nullptr);
    g_object_unref(gfile);
    if (!stored) GTEST_SKIP() << "no metadata store on this system";
    EXPECT_TRUE(hasCustomIcon(file));
}

TEST(FileHashRemove, RemovesTreesAndRefusesDangerousPaths) {
    ScopedXdg env;
    TempDir dir;
    dir.write("tree/sub/deep/x.txt", "x");
    std::filesystem::create_directory_symlink(env.home(), dir / "tree/link-to-home");
    EXPECT_TRUE(remove(dir / "tree"));
    EXPECT_FALSE(std::filesystem::exists(dir / "tree"));
    EXPECT_TRUE(std::filesystem::exists(env.home())); // links are removed, not followed
    EXPECT_FALSE(remove(dir / "tree"));

    EXPECT_FALSE(remove(""));
    EXPECT_FALSE(remove(env.home()));
    EXPECT_FALSE(remove(env.home() + "/"));
    EXPECT_FALSE(remove(dir / "."));
    EXPECT_TRUE(std::filesystem::exists(env.home()));
    EXPECT_TRUE(std::filesystem::exists(dir.path()));
}

TEST(FileHashRemove, CreateDirReplacesWhatIsThere) {
    TempDir dir;
    std::string file = dir.write("was-a-file", "x");
    EXPECT_TRUE(createDir(file));
    EXPECT_TRUE(isFolder(file));
    dir.write("full/inner.txt", "x");
    EXPECT_TRUE(createDir(dir / "full"));
    EXPECT_TRUE(std::filesystem::is_empty(dir / "full"));
    EXPECT_TRUE(createDir(dir / "new/with/parents"));
    EXPECT_TRUE(isFolder(dir / "new/with/parents"));
}

TEST(FileHashTempFolder, CleanOrKeepInsideTheSupportFolder) {
    ScopedXdg env;
    std::string support = env.dataHome() + "/pxmenu";
    std::string made = toTempFolderPath(".job");
    EXPECT_EQ(made, support + "/.job");
    ASSERT_TRUE(isFolder(made));
    std::ofstream(made + "/partial") << "x";

    EXPECT_EQ(toTempFolderPath(".job", false), made);
    EXPECT_TRUE(std::filesystem::exists(made + "/partial"));
    EXPECT_EQ(toTempFolderPath(".job"), made);
    EXPECT_FALSE(std::filesystem::exists(made + "/partial"));

    for (const char* name : {"", " ", ".", "..", "a/../..", "/"})
        EXPECT_EQ(toTempFolderPath(name), "") << name;
    EXPECT_TRUE(isFolder(support));
}

TEST(FileHashTempFolder, RemoveAllTempFolderTakesOnlyHiddenEntries) {
    ScopedXdg env;
    std::string support = env.dataHome() + "/pxmenu";
    toTempFolderPath(".one");
    toTempFolderPath(".two/nested");
    toTempFolderPath("PXAppIcon");
    std::ofstream(support + "/.stray-file") << "x";

    removeAllTempFolder();
    EXPECT_EQ(folderEntries(support), std::vector<std::string>{"PXAppIcon"});
}

TEST(FileHashTempFolder, RemoveAllTempFolderWithoutSupportFolder) {
    ScopedXdg env;
    removeAllTempFolder();
    EXPECT_FALSE(std::filesystem::exists(env.dataHome() + "/pxmenu"));
}

TEST(FileHashPasteboard, CopyTrimsWhiteSpaceOnly) {
    platform::FakePasteboard pasteboard;
    pasteboard.setString("old");
    copyToPasteboard(" \t/a b/c.txt  ", pasteboard);
    EXPECT_EQ(pasteboard.string(), "/a b/c.txt");
    EXPECT_EQ(pasteboard.clearCount(), 1u);
    copyToPasteboard("/a\n/b\n ", pasteboard);
    EXPECT_EQ(pasteboard.string(), "/a\n/b\n");
}

TEST(FileHashUniquePath, CountsFromOneAndKeepsTheExtension) {
    TempDir dir;
    EXPECT_EQ(uniquePath(dir / "free.txt"), dir / "free.txt");
    EXPECT_EQ(uniquePath(dir.write("report.PDF")), dir / "report-1.PDF");
    EXPECT_EQ(uniquePath(dir.write("Makefile")), dir / "Makefile-1");
    EXPECT_EQ(uniquePath(dir.write(".bashrc")), dir / ".bashrc-1");
    EXPECT_EQ(uniquePath(dir.write("a.tar.gz")), dir / "a.tar-1.gz");
    EXPECT_EQ(uniquePath(dir.write("my notes.v1 draft")), dir / "my notes.v1 draft-1");
    EXPECT_EQ(uniquePath(dir.mkdir("Folder")), dir / "Folder-1");
}

TEST(FileHashUniquePath, LowestFreeNumberWinsAndLinksOccupyNames) {
    TempDir dir;
    std::string original = dir.write("a.txt");
    dir.write("a-2.txt");
    EXPECT_EQ(uniquePath(original), dir / "a-1.txt");
    std::filesystem::create_symlink(dir / "nowhere", dir / "a-1.txt");
    EXPECT_EQ(uniquePath(original), dir / "a-3.txt");
    for (int n = 3; n <= 12; ++n)
        dir.write("a-" + std::to_string(n) + ".txt");
    EXPECT_EQ(uniquePath(original), dir / "a-13.txt");
}

TEST(FileHashDigest, ContentsDigestOrNameFallback) {
    TempDir dir;
    EXPECT_EQ(fileMD5(dir.write("hello.txt", "hello\n")), "b1946ac92492d2347c6235b4d2611184");
    EXPECT_EQ(fileMD5(dir.write("empty.bin")), "d41d8cd98f00b204e9800998ecf8427e");
    EXPECT_EQ(fileMD5(dir / "gone.tar.gz"), "gone.tar");
    EXPECT_EQ(fileMD5(dir.mkdir("Album.photos")), "Album");
    // Read in several pieces: the digest must equal the one of the whole contents at once.
    std::string large;
    for (int i = 0; i < 200000; ++i)
        large += static_cast<char>(i * 7 % 251);
    gchar* whole = g_compute_checksum_for_data(
        G_CHECKSUM_MD5, reinterpret_cast<const guchar*>(large.data()), large.size());
    EXPECT_EQ(fileMD5(dir.write("large", large)), whole);
    g_free(whole);
}

TEST(FileHashFolderEntries, ListsNamesOnly) {
    TempDir dir;
    dir.write("x");
    dir.write(".hidden");
    dir.write("sub/deeper");
    auto names = folderEntries(dir.path());
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{".hidden", "sub", "x"}));
    EXPECT_TRUE(folderEntries(dir / "x").empty());
    EXPECT_TRUE(folderEntries(dir / "missing").empty());
}

} // namespace
} // namespace px::filehash
