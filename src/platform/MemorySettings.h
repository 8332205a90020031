#pragma once

#include "platform/Settings.h"

#include <mutex>

namespace px::platform {

// An in-memory settings suite for unit tests.
class MemorySettings final : public Settings {
  public:
    plist::Value objectForKey(std::string_view key) override;
    void setObject(const std::string& key, plist::Value value) override;
    void modify(const std::string& key,
                const std::function<plist::Value(const plist::Value&)>& change) override;

    void clear();
    size_t writeCount() const { return m_writes; }

  private:
    std::mutex m_mutex;
    plist::Dictionary m_values;
    size_t m_writes = 0;
};

} // namespace px::platform
