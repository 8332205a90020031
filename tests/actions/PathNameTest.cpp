#include "actions/PathName.h"

#include <gtest/gtest.h>

namespace px::path {
namespace {

TEST(PathName, ExtensionIsTheTextAfterTheLastDotOfTheLastComponent) {
    EXPECT_EQ(pathExtension("/x/a.tar.gz"), "gz");
    EXPECT_EQ(deletingPathExtension("/x/a.tar.gz"), "/x/a.tar");
    EXPECT_EQ(pathExtension("/x/report.PDF"), "PDF");
    EXPECT_EQ(pathExtension("/x/pkg.app/"), "app");
    EXPECT_EQ(deletingPathExtension("/x/pkg.app/"), "/x/pkg");
}

TEST(PathName, NamesWithoutAnExtension) {
    for (const char* path : {"/x/Makefile", "/x/.bashrc", "/x/notes.v1 draft", "/x/trailing.",
                             "/x/dir.d/file", "/", "", "name.with\ttab"}) {
        EXPECT_EQ(pathExtension(path), "") << path;
        std::string_view expected = path;
        if (expected.size() > 1 && expected.back() == '/') expected.remove_suffix(1);
        EXPECT_EQ(deletingPathExtension(path), expected) << path;
    }
    EXPECT_EQ(pathExtension("/x/.bashrc.bak"), "bak");
    EXPECT_EQ(deletingPathExtension("/x/.bashrc.bak"), "/x/.bashrc");
}

TEST(PathName, LastComponentAndParent) {
    EXPECT_EQ(lastPathComponent("/a/b.txt"), "b.txt");
    EXPECT_EQ(lastPathComponent("/a/b/"), "b");
    EXPECT_EQ(lastPathComponent("/"), "/");
    EXPECT_EQ(lastPathComponent("plain"), "plain");
    EXPECT_EQ(deletingLastPathComponent("/a/b/"), "/a");
    EXPECT_EQ(deletingLastPathComponent("/a"), "/");
    EXPECT_EQ(deletingLastPathComponent("/"), "/");
    EXPECT_EQ(deletingLastPathComponent("plain"), "");
    EXPECT_EQ(deletingLastPathComponent("/a//b"), "/a");
}

TEST(PathName, AppendingUsesOneSlash) {
    EXPECT_EQ(appendingPathComponent("/", "etc"), "/etc");
    EXPECT_EQ(appendingPathComponent("/x/", "/y"), "/x/y");
    EXPECT_EQ(appendingPathComponent("/x", "a b"), "/x/a b");
}

TEST(PathName, LowercasedHandlesUnicodeAndStrayBytes) {
    EXPECT_EQ(lowercased("PDF"), "pdf");
    EXPECT_EQ(lowercased("\xC3\x84"
                         "B"),
              "\xC3\xA4"
              "b"); // ÄB
    EXPECT_EQ(lowercased("A\xFF"
                         "B"),
              "a\xFF"
              "b");
}

} // namespace
} // namespace px::path
