#pragma once

#include "config/Localization.h"
#include "config/MenuKeys.h"
#include "config/PXDefaultData.h"
#include "config/PXMenuManager.h"
#include "extension/FinderSync.h"
#include "platform/Platform.h"
#include "platform/fake/FakeUi.h"
#include "platform/fake/MemorySettings.h"
#include "support/Queues.h"
#include "support_files/TestSupport.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace px::test {

// A FinderSync whose actions record what they were called with.
class RecordingFinderSync : public FinderSync {
  public:
    using FinderSync::FinderSync;
    std::vector<std::string> calls;

    void openWithApp(const PXMenuItem::Ptr& item, const std::optional<std::string>&) override {
        calls.push_back("app:" + item->appName + ":" + std::to_string(item->tag));
    }
    void convertItem(const PXMenuItem::Ptr& item, const PXMenuItem::Ptr& parent) override {
        calls.push_back("convert:" + item->key + ":" + std::to_string(item->tag) + ":" +
                        parent->key);
    }
    void moveAndCopyItem(const PXMenuItem::Ptr& item, bool isCopy) override {
        calls.push_back(std::string(isCopy ? "copy:" : "move:") + item->key);
    }
    void deletePath() override { calls.push_back("delete"); }
    void goSet() override { calls.push_back("goset"); }
    void startColorPicker() override { calls.push_back("color"); }
};

class ExtensionFixture : public ::testing::Test {
  protected:
    void SetUp() override {
        suite = std::make_shared<platform::MemorySettings>();
        PXMenuManager::configure(suite, data.path());
        ui = std::make_shared<platform::FakeUi>();
        controller =
            std::make_shared<platform::StaticFinderSyncController>(std::vector<std::string>{}, "");
        platform::install(
            {ui, nullptr, nullptr, controller, std::make_shared<platform::MemorySettings>()});
        queue::markMainThread();
        PXDefaultData::setup();
    }
    void TearDown() override {
        queue::runUntilIdle();
        platform::install({});
        PXMenuManager::resetToDefaultLocations();
    }
    void select(std::vector<std::string> paths, std::string target) {
        controller->setSelection(std::move(paths));
        controller->setTarget(std::move(target));
    }
    static const MenuEntry* find(const Menu& menu, const std::string& key) {
        auto it = std::find_if(menu.begin(), menu.end(),
                               [&](const MenuEntry& e) { return e.key == key; });
        return it == menu.end() ? nullptr : &*it;
    }
    static std::vector<std::string> keys(const Menu& menu) {
        std::vector<std::string> result;
        for (const auto& entry : menu)
            result.push_back(entry.key);
        return result;
    }
    void enable(const std::string& key) {
        PXMenuManager::updateMenuKey(menukey::kRightMenu, key, "disabled", plist::Value(false));
    }

    TempDir data;
    TempDir work;
    ScopedXdg xdg;
    std::shared_ptr<platform::MemorySettings> suite;
    std::shared_ptr<platform::FakeUi> ui;
    std::shared_ptr<platform::StaticFinderSyncController> controller;
};

} // namespace px::test
