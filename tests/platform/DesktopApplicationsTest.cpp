#include "platform/linux/DesktopApplications.h"

#include "platform/linux/GioApplications.h"
#include "support_files/TestSupport.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

using namespace px;

namespace {

// GIO reads the desktop entries once per process, so the entries are written before its first
// use in this test program's process (ctest runs each test in a process of its own).
TEST(DesktopApplicationsTest, InstalledEntriesAreListedSortedAndFoundByName) {
    test::ScopedXdg xdg;
    test::ScopedEnv dirs("XDG_DATA_DIRS", xdg.home() + "/none");
    const std::string apps = xdg.dataHome() + "/applications/";
    auto entry = [&](const std::string& file, const std::string& lines) {
        std::filesystem::create_directories(apps);
        std::ofstream(apps + file) << "[Desktop Entry]\nType=Application\nExec=true\n" << lines;
    };
    entry("zeta.desktop", "Name=zeta Writer\nIcon=accessories-text-editor\nComment=Words\n");
    entry("alpha.desktop", "Name=Alpha Paint\nIcon=/opt/alpha/icon.png\n");
    entry("hidden.desktop", "Name=Hidden Helper\nNoDisplay=true\n");

    auto listed = platform::desktopApplications();
    std::vector<std::string> names;
    for (const auto& application : listed)
        names.push_back(application.name);
    EXPECT_EQ(names, (std::vector<std::string>{"Alpha Paint", "zeta Writer"}));
    ASSERT_EQ(listed.size(), 2u);
    EXPECT_EQ(listed[0].icons, (std::vector<std::string>{"/opt/alpha/icon.png"}));
    EXPECT_EQ(listed[1].id, "zeta.desktop");
    EXPECT_EQ(listed[1].description, "Words");
    EXPECT_EQ(listed[1].icons.front(), "accessories-text-editor");

    EXPECT_TRUE(platform::isApplicationInstalled("zeta Writer"));
    EXPECT_TRUE(platform::isApplicationInstalled("Hidden Helper")) << "it can still be opened";
    EXPECT_FALSE(platform::isApplicationInstalled("Visual Studio Code"));
    EXPECT_FALSE(platform::isApplicationInstalled(""));
}

} // namespace
