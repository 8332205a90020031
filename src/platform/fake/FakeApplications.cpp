#include "platform/fake/FakeApplications.h"

#include <algorithm>

namespace px::platform {

FakeApplications::FakeApplications(std::set<std::string> installed)
    : m_installed(std::move(installed)) {}

void FakeApplications::refuse(std::string appName, std::vector<std::string> paths) {
    m_refused.push_back({std::move(appName), std::move(paths)});
}

bool FakeApplications::openWithApplication(const std::string& appName,
                                           const std::vector<std::string>& paths) {
    Launch launch{appName, paths};
    m_launches.push_back(launch);
    if (!m_installed.contains(appName)) return false;
    return std::find(m_refused.begin(), m_refused.end(), launch) == m_refused.end();
}

} // namespace px::platform
