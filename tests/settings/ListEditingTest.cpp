#include "PreviewPanel.h"
#include "SettingsFixture.h"
#include "config/MenuKeys.h"
#include "config/PXDefaultData.h"
#include "plist/ItemFields.h"
#include "support/Localization.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <algorithm>
#include <filesystem>
#include <fstream>

using namespace px;
using namespace px::test;

namespace {

using Keys = std::vector<std::string>;

class ListEditingTest : public SettingsFixture {
  protected:
    std::ptrdiff_t position(const nlohmann::json& menu, const std::string& key) {
        auto all = keys(menu);
        return std::find(all.begin(), all.end(), key) - all.begin();
    }
    Keys storedKeys(const char* menuKey) {
        Keys result;
        for (const auto& item : settingsFile().get(menuKey).array())
            result.push_back(fields::string(item, "key"));
        return result;
    }
    bool previewShows(const std::string& title) {
        auto found = window->preview()->tree()->findItems(QString::fromStdString(title),
                                                          Qt::MatchExactly | Qt::MatchRecursive);
        return !found.isEmpty();
    }
};

TEST_F(ListEditingTest, SwitchingAnEntryOffTakesItOutOfTheMenuAndThePreview) {
    auto& rightMenu = page(menukey::kRightMenu);
    ASSERT_NE(entry(menuForFile(), "Copy to"), nullptr);
    ASSERT_TRUE(previewShows(localized("Copy to")));

    select(rightMenu, "Copy to");
    key(rightMenu.list(), Qt::Key_Space);
    EXPECT_EQ(rightMenu.list()->currentItem()->checkState(), Qt::Unchecked);
    EXPECT_TRUE(fields::flag(storedEntry(menukey::kRightMenu, "Copy to"), "disabled"));
    EXPECT_EQ(entry(menuForFile(), "Copy to"), nullptr);
    EXPECT_FALSE(previewShows(localized("Copy to")));

    // And on again with the mouse, on the check box itself.
    QListWidgetItem* row = rightMenu.list()->item(rowOf(rightMenu, "Copy to"));
    const QRect box = rightMenu.list()->visualItemRect(row);
    QTest::mouseClick(rightMenu.list()->viewport(), Qt::LeftButton, {},
                      QPoint(box.left() + box.height() / 2, box.center().y()));
    EXPECT_EQ(rightMenu.list()->item(rowOf(rightMenu, "Copy to"))->checkState(), Qt::Checked);
    EXPECT_NE(entry(menuForFile(), "Copy to"), nullptr);
}

TEST_F(ListEditingTest, ReorderingByButtonsKeysAndDropIsWhatTheMenuFollows) {
    auto& rightMenu = page(menukey::kRightMenu);
    auto before = menuForFile();
    ASSERT_LT(position(before, "Copy to"), position(before, "Move to"));

    select(rightMenu, "Copy to");
    QTest::mouseClick(rightMenu.moveDownButton(), Qt::LeftButton);
    auto after = menuForFile();
    EXPECT_EQ(position(after, "Move to") + 1, position(after, "Copy to"));
    EXPECT_EQ(rightMenu.list()->currentItem()->data(Qt::UserRole).toString(), "Copy to");

    key(rightMenu.list(), Qt::Key_Up, Qt::AltModifier);
    key(rightMenu.list(), Qt::Key_Up, Qt::AltModifier);
    after = menuForFile();
    EXPECT_LT(position(after, "Copy to"), position(after, "Move to"));
    EXPECT_EQ(rowOf(rightMenu, "Copy to"), 4);
    EXPECT_EQ(storedKeys(menukey::kRightMenu).at(4), "Copy to");
    EXPECT_EQ(storedKeys(menukey::kRightMenu).at(5), "Execute Script");

    // A drop moves the row in the list's model; the stored order follows.
    const int from = rowOf(rightMenu, "Delete");
    ASSERT_TRUE(rightMenu.list()->model()->moveRow({}, from, {}, 0));
    QApplication::processEvents();
    EXPECT_EQ(storedKeys(menukey::kRightMenu).at(0), "Delete");
    EXPECT_EQ(rowOf(rightMenu, "Delete"), 0);
    EXPECT_EQ(rightMenu.list()->count(), 28);
}

TEST_F(ListEditingTest, ATitleEditedInPlaceIsTheMenuTitleAndAnEmptyOneRestoresTheStandard) {
    auto& rightMenu = page(menukey::kRightMenu);
    auto rename = [&](const QString& title) {
        select(rightMenu, "Copy to");
        key(rightMenu.list(), Qt::Key_F2);
        auto* editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        ASSERT_NE(editor, nullptr);
        key(editor, Qt::Key_A, Qt::ControlModifier);
        key(editor, Qt::Key_Backspace);
        QTest::keyClicks(editor, title);
        key(editor, Qt::Key_Return);
    };
    rename("Copy \"quoted\" $(here)");
    const auto menu = menuForFile();
    const auto* renamed = entry(menu, "Copy to");
    ASSERT_NE(renamed, nullptr);
    EXPECT_EQ(renamed->at("title"), "Copy \"quoted\" $(here)");
    EXPECT_EQ(fields::string(storedEntry(menukey::kRightMenu, "Copy to"), "displayName"),
              "Copy \"quoted\" $(here)");

    rename("");
    EXPECT_FALSE(storedEntry(menukey::kRightMenu, "Copy to").get("displayName"));
    const auto after = menuForFile();
    ASSERT_NE(entry(after, "Copy to"), nullptr);
    EXPECT_EQ(entry(after, "Copy to")->at("title"), localized("Copy to"));
}

TEST_F(ListEditingTest, AnApplicationChosenFromTheDesktopEntriesIsAddedAndMarkedInstalled) {
    ScopedEnv noSystemApplications("XDG_DATA_DIRS", xdg.home() + "/system");
    std::filesystem::create_directories(xdg.dataHome() + "/applications");
    std::ofstream(xdg.dataHome() + "/applications/org.example.TextEditor.desktop")
        << "[Desktop Entry]\nType=Application\nName=Text Editor\nExec=true\n";
    auto& apps = page(menukey::kCommonApp);
    prompts.applications.push_back(platform::DesktopApplication{
        "Text Editor", "org.example.TextEditor.desktop", "", {"accessories-text-editor"}});
    QTest::mouseClick(apps.addButton(), Qt::LeftButton);
    ASSERT_EQ(rowOf(apps, "Text Editor"), 11);
    EXPECT_EQ(apps.list()->currentRow(), 11);
    EXPECT_EQ(apps.list()->item(11)->text(), "Text Editor");
    EXPECT_EQ(apps.list()->item(0)->text(), "WeChat  (not installed)");
    plist::Value added = storedEntry(menukey::kCommonApp, "Text Editor");
    ASSERT_TRUE(added);
    EXPECT_TRUE(prompts.messages.isEmpty()) << prompts.messages.join("\n").toStdString();

    // The same application again is refused with a message.
    prompts.applications.push_back(platform::DesktopApplication{"Text Editor", "", "", {}});
    QTest::mouseClick(apps.addButton(), Qt::LeftButton);
    EXPECT_EQ(apps.list()->count(), 12);
    ASSERT_EQ(prompts.messages.size(), 1);
    EXPECT_TRUE(prompts.messages[0].contains("Text Editor"));
}

TEST_F(ListEditingTest, AFolderATemplateAndAnIconAreAddedFromWhatThePersonPicks) {
    const std::string folder = work.mkdir("Projects \"x\"");
    prompts.paths.push_back(folder);
    QTest::mouseClick(page(menukey::kCommonPath).addButton(), Qt::LeftButton);
    EXPECT_EQ(fields::string(storedEntry(menukey::kCommonPath, folder), "path"), folder);
    EXPECT_EQ(page(menukey::kCommonPath).list()->item(0)->text().toStdString(), folder);

    const std::string source = work.write("Invoice.md", "# Invoice\n");
    prompts.paths.push_back(source);
    auto& templates = page(menukey::kNewFile);
    QTest::mouseClick(templates.addButton(), Qt::LeftButton);
    ASSERT_EQ(templates.list()->count(), 21);
    EXPECT_EQ(templates.list()->item(20)->text(), "Invoice");
    plist::Value added = settingsFile().get(menukey::kNewFile).array().back();
    EXPECT_EQ(fields::string(added, "ext"), "md");
    EXPECT_EQ(readFile(fields::string(added, "templatePath")), "# Invoice\n");

    prompts.paths.push_back(std::string(PX_SOURCE_DIR) + "/data/icons/star.svg");
    prompts.paths.push_back(work.write("broken.png", "no picture"));
    auto& icons = page(menukey::kFolderIcon);
    QTest::mouseClick(icons.addButton(), Qt::LeftButton);
    QTest::mouseClick(icons.addButton(), Qt::LeftButton);
    ASSERT_EQ(icons.list()->count(), 1) << "a fresh configuration has no folder icons";
    EXPECT_EQ(icons.list()->item(0)->text(), "star");
    ASSERT_EQ(prompts.messages.size(), 1);
    EXPECT_TRUE(prompts.messages[0].contains("broken.png"));
}

TEST_F(ListEditingTest, RestoreFactoryAsksAndThenPutsTheFactoryListBack) {
    auto& rightMenu = page(menukey::kRightMenu);
    select(rightMenu, "Copy to");
    QTest::mouseClick(rightMenu.removeButton(), Qt::LeftButton);
    select(rightMenu, "Hide All Files");
    key(rightMenu.list(), Qt::Key_Delete);
    select(rightMenu, "Delete");
    EXPECT_FALSE(rightMenu.removeButton()->isEnabled()) << "a permanent entry";
    key(rightMenu.list(), Qt::Key_Delete);
    EXPECT_EQ(rightMenu.list()->count(), 26);
    EXPECT_EQ(entry(menuForFile(), "Copy to"), nullptr);

    prompts.answers = {false, true};
    QTest::mouseClick(rightMenu.restoreButton(), Qt::LeftButton);
    EXPECT_EQ(rightMenu.list()->count(), 26);
    QTest::mouseClick(rightMenu.restoreButton(), Qt::LeftButton);
    EXPECT_EQ(prompts.questions.size(), 2);
    EXPECT_EQ(rightMenu.list()->count(), 28);
    Keys factory;
    for (const auto& item : PXDefaultData::defaultMainMenu().array())
        factory.push_back(fields::string(item, "key"));
    EXPECT_EQ(storedKeys(menukey::kRightMenu), factory);
    EXPECT_NE(entry(menuForFile(), "Copy to"), nullptr);
}

} // namespace
