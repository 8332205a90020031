#pragma once

#include "config/PXMenuManager.h"
#include "extension/FinderSync.h"
#include "platform/Platform.h"
#include "platform/fake/FakePasteboard.h"
#include "platform/fake/FakeUi.h"
#include "platform/fake/MemorySettings.h"
#include "support_files/TestSupport.h"

#include <gtest/gtest.h>
#include <memory>

namespace px::test {

// A FinderSync with fake prompts, clipboard and selection, and an in-memory shared suite.
class ActionFixture : public ::testing::Test {
  protected:
    void SetUp() override {
        PXMenuManager::configure(suite, data.path());
        platform::Platform installed{ui, pasteboard, nullptr, controller,
                                     std::make_shared<platform::MemorySettings>()};
        platform::install(std::move(installed));
        sync = std::make_unique<FinderSync>();
    }
    void TearDown() override {
        sync.reset();
        platform::install({});
        PXMenuManager::resetToDefaultLocations();
    }
    void select(std::vector<std::string> paths) {
        controller->setSelection(std::move(paths));
        sync->selectURLsCache.reset();
    }

    ScopedXdg xdg;
    TempDir data;
    TempDir work;
    std::shared_ptr<platform::MemorySettings> suite = std::make_shared<platform::MemorySettings>();
    std::shared_ptr<platform::FakeUi> ui = std::make_shared<platform::FakeUi>();
    std::shared_ptr<platform::FakePasteboard> pasteboard =
        std::make_shared<platform::FakePasteboard>();
    std::shared_ptr<platform::StaticFinderSyncController> controller =
        std::make_shared<platform::StaticFinderSyncController>(std::vector<std::string>{}, "");
    std::unique_ptr<FinderSync> sync;
};

} // namespace px::test
