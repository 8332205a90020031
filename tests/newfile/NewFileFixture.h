#pragma once

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
#include <filesystem>
#include <gtest/gtest.h>

namespace px::test {

// A workspace that records the addresses it was asked to open.
class RecordingWorkspace final : public platform::Workspace {
  public:
    std::vector<std::string> opened;

    bool openURL(const std::string& url) override {
        opened.push_back(url);
        return true;
    }
    bool revealInFileManager(const std::string&) override { return true; }
    std::vector<std::string> mountedVolumes() override { return {}; }
    void observeMounts(std::function<void()>) override {}
};

// A real FinderSync over the fakes, with the factory menus in an in-memory suite, a scratch
// folder to work in and HOME pointed at a temporary folder.
class NewFileFixture : public ::testing::Test {
  protected:
    void SetUp() override {
        suite = std::make_shared<platform::MemorySettings>();
        PXMenuManager::configure(suite, data.path());
        ui = std::make_shared<platform::FakeUi>();
        workspace = std::make_shared<RecordingWorkspace>();
        controller =
            std::make_shared<platform::StaticFinderSyncController>(std::vector<std::string>{}, "");
        platform::install(
            {ui, nullptr, workspace, controller, std::make_shared<platform::MemorySettings>()});
        queue::markMainThread();
        PXDefaultData::setup();
    }
    void TearDown() override {
        queue::runUntilIdle();
        platform::install({});
        PXMenuManager::resetToDefaultLocations();
    }

    // Runs the action for the item as dispatch does, with `selection` selected.
    void create(const PXMenuItem::Ptr& item, std::vector<std::string> selection) {
        controller->setSelection(std::move(selection));
        controller->setTarget("");
        FinderSync sync;
        sync.createFileWithItem(item);
        queue::runUntilIdle();
    }
    void createIn(const PXMenuItem::Ptr& item) { create(item, {work.path()}); }

    // The factory entry with the key (extension), as the menu lists build it.
    static PXMenuItem::Ptr templateItem(const std::string& key) {
        for (auto& item : PXMenuManager::newFileTemplateMenuArray(true))
            if (item->key == key) return item;
        ADD_FAILURE() << "no template " << key;
        return PXMenuItem::create(key);
    }
    static PXMenuItem::Ptr itemWith(const std::string& key, const std::string& ext) {
        auto item = PXMenuItem::create(key);
        item->ext = ext;
        return item;
    }

    // The names in a folder, sorted.
    static std::vector<std::string> names(const std::string& folder) {
        std::vector<std::string> result;
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            result.push_back(entry.path().filename().string());
        std::sort(result.begin(), result.end());
        return result;
    }

    ScopedXdg xdg;
    TempDir data;
    TempDir work;
    std::shared_ptr<platform::MemorySettings> suite;
    std::shared_ptr<platform::FakeUi> ui;
    std::shared_ptr<RecordingWorkspace> workspace;
    std::shared_ptr<platform::StaticFinderSyncController> controller;
};

} // namespace px::test
