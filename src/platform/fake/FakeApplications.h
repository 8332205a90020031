#pragma once

#include "platform/Applications.h"

#include <set>
#include <string>
#include <vector>

namespace px::platform {

// Applications for unit tests: every request is recorded; the installed names start it.
// `refuse` makes one (application, items) pair fail, as a broken launch would.
class FakeApplications final : public Applications {
  public:
    struct Launch {
        std::string appName;
        std::vector<std::string> paths;
        bool operator==(const Launch&) const = default;
    };

    explicit FakeApplications(std::set<std::string> installed = {});
    void refuse(std::string appName, std::vector<std::string> paths);

    bool openWithApplication(const std::string& appName,
                             const std::vector<std::string>& paths) override;
    // Records the entry as a launch of that name with no items; installed names start it.
    bool launchDesktopEntry(const std::string& desktopId) override {
        return openWithApplication(desktopId, {});
    }
    const std::vector<Launch>& launches() const { return m_launches; }

  private:
    std::set<std::string> m_installed;
    std::vector<Launch> m_refused;
    std::vector<Launch> m_launches;
};

} // namespace px::platform
