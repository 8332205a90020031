#pragma once

#include "actions/PrivilegeDrop.h"
#include "platform/Platform.h"
#include "platform/fake/FakeUi.h"
#include "platform/fake/MemorySettings.h"
#include "support/PXURLCache.h"
#include "support_files/TestSupport.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace px::test {

// Home and XDG folders in a temporary folder, a scripted Ui and in-memory standard defaults,
// and a fresh shared cache for every test.
class PermitTest : public ::testing::Test {
  protected:
    void SetUp() override {
        PXURLCache::resetForTesting();
        installPlatform(defaults);
    }
    void TearDown() override {
        PXURLCache::resetForTesting();
        platform::install({});
    }
    // Installs the Ui with these standard defaults; none means the real file under
    // $XDG_CONFIG_HOME.
    void installPlatform(std::shared_ptr<platform::Settings> standardDefaults) {
        platform::Platform installed;
        installed.ui = ui;
        installed.standardDefaults = std::move(standardDefaults);
        platform::install(std::move(installed));
    }
    // A new folder in the scratch folder, its path free of symbolic links.
    std::string folder(const std::string& name, mode_t mode = 0755) const {
        std::string path = std::filesystem::canonical(scratch.mkdir(name)).string();
        ::chmod(path.c_str(), mode);
        return path;
    }

    ScopedXdg xdg;
    TempDir scratch;
    std::shared_ptr<platform::FakeUi> ui = std::make_shared<platform::FakeUi>();
    std::shared_ptr<platform::MemorySettings> defaults =
        std::make_shared<platform::MemorySettings>();
};

// Inside a check: reports a failed condition on standard error and makes the check fail.
#define REQUIRE(condition)                                                                         \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            std::fprintf(stderr, "%s:%d: %s\n", __FILE__, __LINE__, #condition);                   \
            return false;                                                                          \
        }                                                                                          \
    } while (false)

} // namespace px::test
