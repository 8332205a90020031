#include "ApplicationChooser.h"
#include "PreferencesPage.h"
#include "PreviewPanel.h"
#include "SettingsFixture.h"
#include "config/ListEntries.h"
#include "config/MenuKeys.h"
#include "config/PXDefaultData.h"
#include "support/Localization.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <set>

using namespace px;
using namespace px::test;

namespace {

using WindowTest = SettingsFixture;

TEST_F(WindowTest, EveryControlHasAnAccessibleNameAndATooltipOrLabel) {
    openWindow();
    int checked = 0;
    for (QWidget* control : window->findChildren<QWidget*>()) {
        if (!qobject_cast<QAbstractButton*>(control) && !qobject_cast<QComboBox*>(control) &&
            !qobject_cast<QLineEdit*>(control) && !qobject_cast<QAbstractItemView*>(control))
            continue;
        if (qobject_cast<QLineEdit*>(control) && qobject_cast<QComboBox*>(control->parent()))
            continue;
        if (control->focusPolicy() == Qt::NoFocus) continue;
        SCOPED_TRACE(control->metaObject()->className());
        EXPECT_FALSE(control->accessibleName().isEmpty()) << control->objectName().toStdString();
        ++checked;
    }
    EXPECT_GT(checked, 40);
}

TEST_F(WindowTest, EveryPageIsReachedAndWorkedWithTheKeyboardAlone) {
    openWindow();
    window->pageList()->setFocus();
    std::set<QWidget*> reached;
    for (int step = 0; step < 40; ++step) {
        reached.insert(QApplication::focusWidget());
        key(QApplication::focusWidget(), Qt::Key_Tab);
    }
    auto& rightMenu = page(menukey::kRightMenu);
    for (QWidget* expected : std::initializer_list<QWidget*>{
             rightMenu.list(), rightMenu.restoreButton(), window->importButton(),
             window->exportButton(), window->preview()->situationChoice(),
             window->preview()->tree()}) {
        EXPECT_TRUE(reached.count(expected)) << expected->accessibleName().toStdString();
    }

    window->pageList()->setFocus();
    for (int page = 1; page < window->pageCount(); ++page) {
        key(window->pageList(), Qt::Key_Down);
        EXPECT_EQ(window->page(page)->isVisible(), true) << page;
    }
    auto* preferences = window->preferencesPage();
    QCheckBox* confirmDelete = preferences->flagBox("pref check0");
    confirmDelete->setFocus();
    key(confirmDelete, Qt::Key_Space);
    EXPECT_TRUE(settingsFile().get("pref check0").boolean());
}

TEST_F(WindowTest, PreferencesAreSavedAtOnceAndThePreviewFollowsThem) {
    openWindow();
    window->showPage(window->pageCount() - 1);
    auto* preferences = window->preferencesPage();
    auto iconsShown = [&] {
        auto* tree = window->preview()->tree();
        for (int row = 0; row < tree->topLevelItemCount(); ++row)
            if (!tree->topLevelItem(row)->icon(0).isNull()) return true;
        return false;
    };
    const bool hadIcons = iconsShown();
    QCheckBox* noIcons = preferences->flagBox("pref check1");
    QTest::mouseClick(noIcons, Qt::LeftButton, {}, QPoint(8, noIcons->height() / 2));
    EXPECT_TRUE(settingsFile().get("pref check1").boolean());
    EXPECT_FALSE(iconsShown());
    EXPECT_TRUE(hadIcons || QIcon::themeName().isEmpty());

    QComboBox* nextMenu = preferences->nextMenuChoice();
    EXPECT_EQ(nextMenu->currentData().toInt(), 3) << "the factory setting";
    nextMenu->setFocus();
    key(nextMenu, Qt::Key_Down);
    EXPECT_EQ(settingsFile().get(menukey::kCommonPathNextMenu).integer(), 4);

    QComboBox* terminal = preferences->terminalChoice("second terminal");
    ASSERT_NE(terminal, nullptr);
    EXPECT_EQ(terminal->currentIndex(), 0) << "automatic";
    ASSERT_EQ(pxmenu({"config", "set", "pref", "second terminal", "my-term"}).exitStatus, 0);
    window->reloadAll();
    EXPECT_EQ(terminal->currentText(), "my-term");
    terminal->setCurrentIndex(0);
    EXPECT_FALSE(settingsFile().get("second terminal"));

    // The preview for a folder's background offers what a background offers.
    auto* situation = window->preview()->situationChoice();
    situation->setCurrentIndex(2);
    auto* tree = window->preview()->tree();
    EXPECT_TRUE(
        tree->findItems(QString::fromStdString(localized("Copy to")), Qt::MatchExactly).isEmpty());
    EXPECT_FALSE(tree->findItems(QString::fromStdString(localized("Copy Path")), Qt::MatchExactly)
                     .isEmpty());
}

TEST_F(WindowTest, TheApplicationChooserFindsApplicationsByWhatIsTyped) {
    qtApplication();
    settings::ApplicationChooser chooser(
        nullptr, {{"Calculator", "calc.desktop", "Arithmetic", {}},
                  {"Text Editor", "org.gnome.TextEditor.desktop", "Edit text files", {}},
                  {"Terminal", "term.desktop", "Use the command line", {}}});
    chooser.show();
    QTest::keyClicks(chooser.searchField(), "edit");
    EXPECT_EQ(chooser.chosenApplication()->name, "Text Editor");
    chooser.searchField()->clear();
    QTest::keyClicks(chooser.searchField(), "command");
    EXPECT_EQ(chooser.chosenApplication()->name, "Terminal");
    QTest::keyClicks(chooser.searchField(), " nothing");
    EXPECT_FALSE(chooser.chosenApplication().has_value());
}

TEST_F(WindowTest, SimplifiedChineseTextsComeFromTheCatalogue) {
    ScopedEnv locale("LC_ALL", "zh_CN.UTF-8"), language("LANGUAGE", "zh_CN");
    resetLocalizationForTesting();
    openWindow();
    EXPECT_EQ(window->windowTitle().toStdString(), "pxmenu 设置");
    EXPECT_EQ(page(menukey::kRightMenu).moveUpButton()->text().toStdString(), "上移(&U)");
    EXPECT_EQ(page(menukey::kRightMenu).list()->item(0)->text().toStdString(), "新建文件");
    resetLocalizationForTesting();
}

// Pictures of every page in English and Chinese, for people to look at:
// <build>/screenshots/settings-<language>-<page>.png.
TEST_F(WindowTest, ScreenshotsOfEveryPage) {
    const QString folder = QStringLiteral(PX_BINARY_DIR "/screenshots");
    QDir().mkpath(folder);
    for (const char* language : {"en", "zh_CN"}) {
        ScopedEnv locale("LC_ALL", std::string(language) + ".UTF-8"), chosen("LANGUAGE", language);
        resetLocalizationForTesting();
        openWindow();
        PXDefaultData(store->manager()).recoverFolderIcon();
        entries::addFolder(store->manager(), xdg.home());
        entries::addFolder(store->manager(), "/usr/share");
        window->reloadAll();
        window->listPage(menukey::kRightMenu)->list()->setCurrentRow(5);
        for (int page = 0; page < window->pageCount(); ++page) {
            window->showPage(page);
            QApplication::processEvents();
            const QString file =
                QStringLiteral("%1/settings-%2-%3.png").arg(folder, language).arg(page);
            QImage shot = window->grab().toImage();
            EXPECT_GE(shot.width(), 800);
            EXPECT_TRUE(shot.save(file)) << file.toStdString();
        }
        settings::ApplicationChooser chooser(window.get());
        chooser.show();
        QApplication::processEvents();
        EXPECT_TRUE(chooser.grab().save(
            QStringLiteral("%1/settings-%2-chooser.png").arg(folder, language)));
    }
    resetLocalizationForTesting();
}

} // namespace
