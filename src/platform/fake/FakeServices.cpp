#include "platform/fake/FakeServices.h"

namespace px::platform {

bool FakeServices::performService(const std::string& name, const std::vector<std::string>& paths) {
    m_requests.push_back({name, paths});
    return answer;
}

} // namespace px::platform
