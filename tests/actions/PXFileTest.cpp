#include "actions/PXFile.h"

#include "PrivilegeDrop.h"
#include "actions/FileSize.h"
#include "support_files/TestSupport.h"

#include <algorithm>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <regex>
#include <sys/stat.h>

namespace px {
namespace {

using test::ScopedXdg;
using test::TempDir;

std::vector<std::string> filenames(const std::vector<std::shared_ptr<PXFile>>& files) {
    std::vector<std::string> names;
    for (const auto& file : files)
        names.push_back(file->filename());
    std::sort(names.begin(), names.end());
    return names;
}

TEST(PXFileNames, DerivedFromThePath) {
    PXFile report("/x/report.PDF");
    EXPECT_EQ(report.filename(), "report.PDF");
    EXPECT_EQ(report.name(), "report");
    EXPECT_EQ(report.ext(), "pdf");
    EXPECT_EQ(report.folder(), "/x");

    auto archive = PXFile::fileWithPath("/x/a.tar.gz");
    EXPECT_EQ(archive->name(), "a.tar");
    EXPECT_EQ(archive->simpleName(), "a");
    EXPECT_EQ(archive->ext(), "gz");

    EXPECT_EQ(PXFile("/x/draft v1.final copy.zip").simpleName(), "draft v1.final copy");
    EXPECT_EQ(PXFile("/x/.config.bak").simpleName(), ".config");
    EXPECT_EQ(PXFile("/x/Makefile").simpleName(), "Makefile");
    EXPECT_EQ(PXFile("/x/Makefile").ext(), "");
    EXPECT_EQ(PXFile("/x/a b#c%.txt").url(), "file:///x/a%20b%23c%25.txt");
    EXPECT_EQ(PXFile("relative.txt").url(), "");
}

TEST(PXFileNames, KindsGoByLowerCasedExtension) {
    EXPECT_TRUE(PXFile("/x/Photo.JPG").isImage());
    EXPECT_TRUE(PXFile("/x/scan.jp2").isImage());
    EXPECT_FALSE(PXFile("/x/vector.svg").isImage());
    EXPECT_TRUE(PXFile("/x/book.AZW3").isKindle());
    EXPECT_TRUE(PXFile("/x/winmail.dat").isTnef());
    EXPECT_TRUE(PXFile("/x/help.CHM").isCHM());
    PXFile plain("/x/notes.txt");
    EXPECT_FALSE(plain.isImage() || plain.isKindle() || plain.isTnef() || plain.isCHM());
    EXPECT_TRUE(PXFile("/x/.profile").isHideFile());
    EXPECT_FALSE(PXFile("/x/a.profile").isHideFile());
}

TEST(PXFileKinds, FolderAndDesktop) {
    ScopedXdg env;
    TempDir dir;
    std::filesystem::create_directory_symlink(dir.mkdir("real"), dir / "link");
    EXPECT_TRUE(PXFile(dir / "real").isFolder());
    EXPECT_FALSE(PXFile(dir / "link").isFolder());
    EXPECT_FALSE(PXFile(dir.write("f.txt")).isFolder());
    EXPECT_TRUE(PXFile(env.home() + "/Desktop").isDesktop());
    EXPECT_FALSE(PXFile(env.home() + "/Desktop/").isDesktop());
}

TEST(PXFileChildren, VisibleEntriesWithParentKeptUnchanged) {
    TempDir dir;
    dir.write("a.txt");
    dir.write(".hidden");
    dir.mkdir("sub");
    auto folder = PXFile::fileWithPath(dir.path());
    auto children = folder->children();
    EXPECT_EQ(filenames(children), (std::vector<std::string>{"a.txt", "sub"}));
    for (const auto& child : children) {
        EXPECT_EQ(child->parent(), folder);
        EXPECT_EQ(child->path, dir / child->filename());
    }
    dir.write("added-later.txt");
    EXPECT_EQ(folder->children(), children); // the same records, not a new listing
    EXPECT_EQ(PXFile::fileWithPath(dir.path())->children().size(), 3u);
}

TEST(PXFileChildren, EmptyForFilesHiddenOnlyFoldersAndMissingPaths) {
    TempDir dir;
    dir.write("only-hidden/.a");
    dir.mkdir("only-hidden/.b");
    EXPECT_TRUE(PXFile::fileWithPath(dir / "only-hidden")->children().empty());
    EXPECT_TRUE(PXFile::fileWithPath(dir.write("file.txt"))->children().empty());
    EXPECT_TRUE(PXFile::fileWithPath(dir / "missing")->children().empty());
    EXPECT_EQ(PXFile::fileWithPath("/")->children().empty(), false);
    for (const auto& child : PXFile::fileWithPath("/")->children())
        EXPECT_EQ(child->path.rfind("//", 0), std::string::npos) << child->path;
}

TEST(PXFileChildren, ChildOutlivingItsParentHasNone) {
    TempDir dir;
    dir.write("a.txt");
    std::shared_ptr<PXFile> child;
    {
        auto folder = PXFile::fileWithPath(dir.path());
        child = folder->children().at(0);
        EXPECT_NE(child->parent(), nullptr);
    }
    EXPECT_EQ(child->parent(), nullptr);
    PXFile direct(dir.path());
    EXPECT_EQ(direct.children().at(0)->parent(), nullptr);
}

TEST(PXFileTempPath, NamedAfterTheContentsAndKeptUntilRemoved) {
    ScopedXdg env;
    TempDir dir;
    std::string hello = dir.write("hello.txt", "hello\n");
    std::string expected = env.dataHome() + "/pxmenu/.b1946ac92492d2347c6235b4d2611184";

    auto file = PXFile::fileWithPath(hello);
    std::string scratch = file->tempPath();
    EXPECT_EQ(scratch, expected);
    ASSERT_TRUE(std::filesystem::is_directory(scratch));
    std::ofstream(scratch + "/work") << "x";
    EXPECT_EQ(file->tempPath(), scratch);
    EXPECT_TRUE(std::filesystem::exists(scratch + "/work")); // kept, not cleaned again

    // Another record of the same contents starts from an empty folder.
    auto twin = PXFile::fileWithPath(dir.write("twin.txt", "hello\n"));
    EXPECT_EQ(twin->tempPath(), scratch);
    EXPECT_FALSE(std::filesystem::exists(scratch + "/work"));

    file->removeTempPath();
    EXPECT_FALSE(std::filesystem::exists(scratch));
    file->removeTempPath();
    EXPECT_EQ(PXFile(dir / "gone.tar.gz").tempPath(), env.dataHome() + "/pxmenu/.gone.tar");
}

TEST(PXFileSize, FilesFoldersAndNothing) {
    TempDir dir;
    EXPECT_EQ(PXFile(dir.write("k.bin", std::string(1500, 'x'))).size(), "1.50 KB");
    dir.write("tree/a", std::string(600, 'x'));
    dir.write("tree/sub/b", std::string(900, 'x'));
    dir.write("tree/sub/.c", std::string(1000, 'x'));
    std::filesystem::create_symlink(dir / "k.bin", dir / "tree/link");
    // The link counts as itself: the length of the path it holds.
    EXPECT_EQ(filehash::fileSize(dir / "tree"), 2500u + (dir / "k.bin").size());
    EXPECT_EQ(PXFile(dir / "missing").size(), "0.00 bytes");
    EXPECT_EQ(filehash::fileSize(""), 0u);
}

TEST(PXFileSize, DecimalUnits) {
    using filehash::fileSizeWithValue;
    EXPECT_EQ(fileSizeWithValue(0), "0.00 bytes");
    EXPECT_EQ(fileSizeWithValue(999), "999.00 bytes");
    EXPECT_EQ(fileSizeWithValue(1000), "1.00 KB");
    EXPECT_EQ(fileSizeWithValue(999999), "1.00 MB");
    EXPECT_EQ(fileSizeWithValue(1'234'567'890), "1.23 GB");
    EXPECT_EQ(fileSizeWithValue(1'500'000'000'000), "1.50 TB");
    EXPECT_EQ(fileSizeWithValue(2'000'000'000'000'000), "2000.00 TB");
}

TEST(PXFileDates, LocalTimeOfWritableItems) {
    TempDir dir;
    test::ScopedEnv zone("TZ", "UTC");
    ::tzset();
    std::string file = dir.write("dated.txt", "x");
    timespec times[2] = {{1614834367, 0}, {1614834367, 0}}; // 2021-03-04 05:06:07 UTC
    ASSERT_EQ(::utimensat(AT_FDCWD, file.c_str(), times, 0), 0);
    EXPECT_EQ(PXFile(file).modifyDate(), "2021-03-04 05:06:07");
    EXPECT_TRUE(std::regex_match(PXFile(file).createDate(),
                                 std::regex(R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d)")));
    EXPECT_EQ(PXFile(dir / "missing").createDate(), "");
    EXPECT_EQ(PXFile(dir / "missing").modifyDate(), "");
}

TEST(PXFileDates, EmptyWithoutWriteAccess) {
    TempDir dir;
    std::string locked = dir.write("locked.txt", "x");
    std::string open = dir.write("open.txt", "x");
    ::chmod(locked.c_str(), 0444);
    ::chmod(open.c_str(), 0666);
    EXPECT_TRUE(test::checkUnprivileged(dir.path(), [&] {
        return PXFile(locked).createDate().empty() && PXFile(locked).modifyDate().empty() &&
               !PXFile(open).createDate().empty() && !PXFile(open).modifyDate().empty();
    }));
}

TEST(PXFileIcon, ThemeNameForTheContentType) {
    TempDir dir;
    EXPECT_EQ(PXFile(dir.mkdir("f")).icon(), "inode-directory");
    EXPECT_EQ(PXFile(dir.write("p.png", "")).icon(), "image-png");
    EXPECT_EQ(PXFile(dir.write("t.txt", "hi")).icon(), "text-plain");
    EXPECT_EQ(PXFile(dir / "missing.png").icon(), "icon");
}

} // namespace
} // namespace px
