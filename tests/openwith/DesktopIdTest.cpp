#include "platform/linux/GioApplications.h"

#include <gtest/gtest.h>

using px::platform::desktopIdCandidates;
using Ids = std::vector<std::string>;

namespace {

TEST(DesktopIds, NamesSuggestTheirDesktopFiles) {
    EXPECT_EQ(desktopIdCandidates("Visual Studio Code"),
              (Ids{"Visual Studio Code.desktop", "visual studio code.desktop",
                   "visualstudiocode.desktop", "visual-studio-code.desktop"}));
    EXPECT_EQ(desktopIdCandidates("firefox"), (Ids{"firefox.desktop"}));
    EXPECT_EQ(desktopIdCandidates("GIMP"), (Ids{"GIMP.desktop", "gimp.desktop"}));
}

TEST(DesktopIds, NamesThatCannotBeIdsSuggestNothing) {
    EXPECT_TRUE(desktopIdCandidates("").empty());
    EXPECT_TRUE(desktopIdCandidates("   ").empty());
    EXPECT_TRUE(desktopIdCandidates("../../etc/passwd").empty());
}

} // namespace
