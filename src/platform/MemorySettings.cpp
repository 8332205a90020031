#include "platform/MemorySettings.h"

namespace px::platform {

plist::Value MemorySettings::objectForKey(std::string_view key) {
    std::lock_guard guard(m_mutex);
    auto it = m_values.find(key);
    return it == m_values.end() ? plist::Value{} : it->second;
}

void MemorySettings::setObject(const std::string& key, plist::Value value) {
    modify(key, [&](const plist::Value&) { return value; });
}

void MemorySettings::modify(const std::string& key,
                            const std::function<plist::Value(const plist::Value&)>& change) {
    std::lock_guard guard(m_mutex);
    auto it = m_values.find(key);
    plist::Value updated = change(it == m_values.end() ? plist::Value{} : it->second);
    ++m_writes;
    if (updated)
        m_values.insert_or_assign(key, updated.frozen());
    else
        m_values.erase(key);
}

void MemorySettings::clear() {
    std::lock_guard guard(m_mutex);
    m_values.clear();
}

} // namespace px::platform
