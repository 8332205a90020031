#pragma once

#include "actions/PrivilegeDrop.h"
#include "config/PXURLCache.h"
#include "extension/PXCheckPermit.h"
#include "platform/MemorySettings.h"
#include "platform/fake/FakeUi.h"
#include "support_files/TestSupport.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace px::test {

// Home and XDG folders in a temporary folder, a scripted Ui and in-memory standard defaults,
// and a fresh grant cache for every test.
class PermitTest : public ::testing::Test {
  protected:
    // The grants as a request reads them from the standard defaults.
    PXURLCache& cache() {
        if (!m_cache) m_cache = std::make_unique<PXURLCache>(*suite);
        return *m_cache;
    }
    // The checks of a request with the fixture's Ui and grants.
    PXCheckPermit permits() { return PXCheckPermit(*ui, cache()); }
    // The next request reads the grants afresh, from `standardDefaults` when given.
    void reopen(std::shared_ptr<platform::Settings> standardDefaults = nullptr) {
        m_cache.reset();
        if (standardDefaults) suite = std::move(standardDefaults);
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
    std::shared_ptr<platform::Settings> suite = defaults;

  private:
    std::unique_ptr<PXURLCache> m_cache;
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
