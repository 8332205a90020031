#include "SettingsFixture.h"
#include "StartupMessages.h"
#include "config/MenuKeys.h"
#include "plist/ItemFields.h"

#include <QPushButton>
#include <filesystem>
#include <fstream>
#include <thread>

using namespace px;
using namespace px::test;

namespace {

using ConfigurationFilesTest = SettingsFixture;

TEST_F(ConfigurationFilesTest, ADamagedImportIsRefusedAndTheConfigurationStaysAsItWas) {
    auto& rightMenu = page(menukey::kRightMenu);
    const std::string saved = work / "saved.plist";
    prompts.paths.push_back(saved);
    QTest::mouseClick(window->exportButton(), Qt::LeftButton);
    ASSERT_TRUE(exists(saved));

    select(rightMenu, "Copy to");
    key(rightMenu.list(), Qt::Key_Space);
    const std::string before = readFile(xdg.configHome() + "/pxmenu/group.plist");
    prompts.paths.push_back(work.write("damaged.plist", "<?xml version=\"1.0\"?><plist><array>"));
    prompts.paths.push_back(
        work.write("shape.plist", "<?xml version=\"1.0\"?><plist><dict><key>array right menu</key>"
                                  "<string>Copy to</string></dict></plist>"));
    QTest::mouseClick(window->importButton(), Qt::LeftButton);
    QTest::mouseClick(window->importButton(), Qt::LeftButton);
    ASSERT_EQ(prompts.messages.size(), 2);
    EXPECT_TRUE(prompts.messages[1].contains("is not a list")) << prompts.messages[1].toStdString();
    EXPECT_EQ(readFile(xdg.configHome() + "/pxmenu/group.plist"), before);
    EXPECT_EQ(entry(menuForFile(), "Copy to"), nullptr);

    prompts.paths.push_back(saved);
    QTest::mouseClick(window->importButton(), Qt::LeftButton);
    EXPECT_EQ(prompts.messages.size(), 2);
    EXPECT_EQ(rightMenu.list()->item(rowOf(rightMenu, "Copy to"))->checkState(), Qt::Checked);
    EXPECT_NE(entry(menuForFile(), "Copy to"), nullptr);
}

// The window switches main-menu entries off while `pxmenu config` switches application entries
// off at the same time; every change of both is kept.
TEST_F(ConfigurationFilesTest, TheWindowAndTheCommandLineWritingAtOnceLoseNothing) {
    auto& rightMenu = page(menukey::kRightMenu);
    const std::vector<std::string> apps{"WeChat",         "Visual Studio Code", "Sublime Text",
                                        "Android Studio", "IntelliJ IDEA",      "WebStorm"};
    const std::vector<std::string> entries{"New File",  "Common Path",   "Copy to",
                                           "Move to",   "Cut Paste",     "Color Picker",
                                           "Copy Path", "Hide All Files"};
    std::vector<int> statuses;
    std::thread other([&] {
        for (const auto& app : apps)
            statuses.push_back(
                pxmenu({"config", "set", "common-app", app, "disabled", "true"}).exitStatus);
    });
    for (const auto& key : entries) {
        select(rightMenu, key);
        this->key(rightMenu.list(), Qt::Key_Space);
    }
    other.join();
    EXPECT_EQ(statuses, std::vector<int>(apps.size(), 0));
    for (const auto& key : entries) {
        SCOPED_TRACE(key);
        EXPECT_TRUE(fields::flag(storedEntry(menukey::kRightMenu, key), "disabled"));
    }
    for (const auto& app : apps) {
        SCOPED_TRACE(app);
        EXPECT_TRUE(fields::flag(storedEntry(menukey::kCommonApp, app), "disabled"));
    }
    // The window shows the other writer's changes when it is activated again.
    window->reloadAll();
    auto& commonApps = page(menukey::kCommonApp);
    EXPECT_EQ(commonApps.list()->item(rowOf(commonApps, "WeChat"))->checkState(), Qt::Unchecked);
}

TEST_F(ConfigurationFilesTest, ChangesMadeElsewhereShowWhenTheWindowIsActivated) {
    auto& rightMenu = page(menukey::kRightMenu);
    ASSERT_EQ(pxmenu({"config", "set", "right", "Move to", "displayName", "Shift"}).exitStatus, 0);
    EXPECT_NE(rightMenu.list()->item(rowOf(rightMenu, "Move to"))->text(), "Shift");
    // Another window takes the focus, then the settings window gets it back.
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    EXPECT_EQ(rightMenu.list()->item(rowOf(rightMenu, "Move to"))->text(), "Shift");
}

TEST_F(ConfigurationFilesTest, ABrokenSettingsFileIsReportedKeptAndTheFactoryMenusShown) {
    const std::string path = xdg.configHome() + "/pxmenu/group.plist";
    const std::string garbage = "<?xml version=\"1.0\"?>\n<plist><dict><key>array right";
    std::filesystem::create_directories(xdg.configHome() + "/pxmenu");
    std::ofstream(path) << garbage;

    openWindow();
    ASSERT_TRUE(start.damage.has_value());
    prompts.answers.push_back(false); // the offer about applications that are not installed
    settings::showStartupMessages(start, store->manager(), prompts, window.get());
    ASSERT_GE(prompts.messages.size(), 1);
    EXPECT_TRUE(prompts.messages[0].contains(QString::fromStdString(path + ".broken")))
        << prompts.messages[0].toStdString();
    EXPECT_EQ(readFile(path + ".broken"), garbage);
    EXPECT_EQ(page(menukey::kRightMenu).list()->count(), 28);
    EXPECT_EQ(page(menukey::kNewFile).list()->count(), 20);
    EXPECT_NE(entry(menuForFile(), "Copy to"), nullptr);
}

TEST_F(ConfigurationFilesTest, TheFirstStartOffersToSwitchOffApplicationsThatAreNotInstalled) {
    ScopedEnv noSystemApplications("XDG_DATA_DIRS", xdg.home() + "/system");
    openWindow();
    ASSERT_TRUE(start.seeded);
    prompts.answers.push_back(true);
    EXPECT_TRUE(settings::showStartupMessages(start, store->manager(), prompts, window.get()));
    ASSERT_EQ(prompts.questions.size(), 1);
    EXPECT_TRUE(prompts.questions[0].contains("WebStorm"));
    window->reloadAll();
    auto& apps = page(menukey::kCommonApp);
    for (int row = 0; row < apps.list()->count(); ++row)
        EXPECT_EQ(apps.list()->item(row)->checkState(), Qt::Unchecked) << row;
    EXPECT_TRUE(apps.list()->item(0)->text().contains("not installed"));

    // Later starts ask nothing.
    openWindow();
    EXPECT_FALSE(settings::showStartupMessages(start, store->manager(), prompts, window.get()));
    EXPECT_EQ(prompts.questions.size(), 1);
}

} // namespace
