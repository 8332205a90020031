#pragma once

#include "platform/Services.h"

#include <string>
#include <vector>

namespace px::platform {

// Services for unit tests: every request is recorded and answered with `answer`.
class FakeServices final : public Services {
  public:
    struct Request {
        std::string name;
        std::vector<std::string> paths;
        bool operator==(const Request&) const = default;
    };

    bool answer = true;
    bool performService(const std::string& name, const std::vector<std::string>& paths) override;
    const std::vector<Request>& requests() const { return m_requests; }

  private:
    std::vector<Request> m_requests;
};

} // namespace px::platform
