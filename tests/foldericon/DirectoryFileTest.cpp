#include "actions/DirectoryFile.h"

#include <gtest/gtest.h>

using namespace px;
using namespace px::directoryfile;

namespace {

TEST(DirectoryFileText, SettingKeepsOtherKeysAndGroupsAndRoundTrips) {
    const std::string dolphin =
        "[Dolphin]\nTimestamp=2024,1,2\nVersion=4\n\n[Settings]\nHiddenFilesShown=true\n";
    const std::string added = withIcon(dolphin, "/icons/a.svg");
    EXPECT_EQ(added, dolphin + "\n[Desktop Entry]\nIcon=/icons/a.svg\n");
    EXPECT_EQ(withoutIcon(added), dolphin);

    const std::string entry = "# mine\n[Desktop Entry]\nName=Work\n[Other]\nIcon=keep\n";
    const std::string inserted = withIcon(entry, "/b.svg");
    EXPECT_EQ(inserted, "# mine\n[Desktop Entry]\nIcon=/b.svg\nName=Work\n[Other]\nIcon=keep\n");
    EXPECT_EQ(withoutIcon(inserted), entry);

    // An existing icon is replaced in place; duplicates of the key go; CRLF lines stay CRLF.
    EXPECT_EQ(withIcon("[Desktop Entry]\r\nIcon = old\r\nName=x\r\nIcon=older\r\n", "new"),
              "[Desktop Entry]\r\nIcon=new\r\nName=x\r\n");
    EXPECT_EQ(withIcon("[Desktop Entry]\nIconSize=3\nIcon[de]=x", "n"),
              "[Desktop Entry]\nIcon=n\nIconSize=3\nIcon[de]=x");
    EXPECT_EQ(withIcon("", "/c.svg"), "[Desktop Entry]\nIcon=/c.svg\n");
    EXPECT_EQ(withIcon("[Desktop Entry]", "d"), "[Desktop Entry]\nIcon=d");
}

TEST(DirectoryFileText, RemovingDropsAnEmptiedGroupOnly) {
    EXPECT_EQ(withoutIcon("[A]\nk=v\n\n[Desktop Entry]\nIcon=x\n\n[B]\nz=1\n"),
              "[A]\nk=v\n\n[B]\nz=1\n");
    EXPECT_EQ(withoutIcon("[Desktop Entry]\nIcon=x\nComment=kept\n"),
              "[Desktop Entry]\nComment=kept\n");
    EXPECT_EQ(withoutIcon("[Desktop Entry]\nIcon=x\n"), "");
    EXPECT_EQ(withoutIcon("[Other]\nIcon=x\n"), "[Other]\nIcon=x\n");
    EXPECT_EQ(withoutIcon("no groups at all"), "no groups at all");
}

TEST(DirectoryFileText, ValuesAreEscapedSoAnyPathReadsBack) {
    EXPECT_EQ(escapedValue("/plain/a b.svg"), "/plain/a b.svg");
    EXPECT_EQ(escapedValue(" lead\\back\nline\ttab\r"), "\\slead\\\\back\\nline\\ttab\\r");
    EXPECT_EQ(withIcon("", "/a\nb=[x]"), "[Desktop Entry]\nIcon=/a\\nb=[x]\n");
}

} // namespace
