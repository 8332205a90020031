#pragma once

#include "platform/Pasteboard.h"

#include <vector>

namespace px::platform {

// An in-memory pasteboard for unit tests; it also keeps every text written, in order.
class FakePasteboard final : public Pasteboard {
  public:
    void clearContents() override;
    void setString(const std::string& text) override;
    std::optional<std::string> string() override { return m_text; }

    const std::vector<std::string>& writes() const { return m_writes; }
    size_t clearCount() const { return m_clears; }

  private:
    std::optional<std::string> m_text;
    std::vector<std::string> m_writes;
    size_t m_clears = 0;
};

} // namespace px::platform
