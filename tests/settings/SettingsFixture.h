#pragma once

#include "ConfigStore.h"
#include "ListPage.h"
#include "ScriptedPrompts.h"
#include "SettingsWindow.h"
#include "config/SettingsStartup.h"
#include "plist/PlistCodec.h"
#include "support_files/TestSupport.h"

#include <QApplication>
#include <QListWidget>
#include <QTest>
#include <gtest/gtest.h>
#include <memory>
#include <nlohmann/json.hpp>

namespace px::test {

// The one QApplication of a test program, on the offscreen platform.
QApplication& qtApplication();

// A settings window over a fresh configuration in a temporary home, started as the program
// starts it, with the window's questions answered by a script.
class SettingsFixture : public ::testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;

    // The window as the program makes it; a second call makes a new one.
    settings::SettingsWindow& openWindow();
    // Shows the page of a list, as a person picks it in the page list.
    settings::ListPage& page(const char* menuKey);
    // Makes the entry with the key the current row of its page's list, which gets the focus.
    QListWidgetItem* select(settings::ListPage& list, const std::string& key);
    int rowOf(settings::ListPage& list, const std::string& key);
    void key(QWidget* widget, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

    ProcessResult pxmenu(std::vector<std::string> args);
    // `pxmenu menu --json` for the selection of one text file.
    nlohmann::json menuForFile();
    static std::vector<std::string> keys(const nlohmann::json& menu);
    static const nlohmann::json* entry(const nlohmann::json& menu, const std::string& key);
    // The shared settings file, read from disk.
    plist::Value settingsFile();
    plist::Value storedEntry(const char* menuKey, const std::string& key);

    ScopedXdg xdg;
    TempDir work;
    ScriptedPrompts prompts;
    std::unique_ptr<settings::ConfigStore> store;
    std::unique_ptr<settings::SettingsWindow> window;
    startup::SettingsStart start;
};

} // namespace px::test
