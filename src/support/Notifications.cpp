#include "support/Notifications.h"

#include <algorithm>

namespace px {

namespace {

std::vector<std::string> split(const std::string& name) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (std::size_t dot; (dot = name.find('.', start)) != std::string::npos; start = dot + 1)
        parts.push_back(name.substr(start, dot - start));
    parts.push_back(name.substr(start));
    return parts;
}

} // namespace

std::string selWithName(const std::string& name) {
    auto parts = split(name);
    if (parts.size() == 3) return "handleSignal_" + parts[1] + "_" + parts[2] + ":";
    if (parts.size() == 2) return "handleSignal_" + parts[0] + "_" + parts[1] + ":";
    return "handleSignal:";
}

NotificationCenter& NotificationCenter::defaultCenter() {
    static NotificationCenter* center = new NotificationCenter();
    return *center;
}

void NotificationCenter::addNotification(const void* owner, const std::string& name,
                                         Handler handler) {
    removeNotification(owner, name);
    std::lock_guard guard(m_mutex);
    m_observers[name].emplace_back(owner, std::move(handler));
}

void NotificationCenter::removeNotification(const void* owner, const std::string& name) {
    std::lock_guard guard(m_mutex);
    auto& list = m_observers[name];
    std::erase_if(list, [&](const auto& entry) { return entry.first == owner; });
}

void NotificationCenter::removeObserver(const void* owner) {
    std::lock_guard guard(m_mutex);
    for (auto& [name, list] : m_observers)
        std::erase_if(list, [&](const auto& entry) { return entry.first == owner; });
}

void NotificationCenter::post(const std::string& name) {
    std::vector<Handler> handlers;
    {
        std::lock_guard guard(m_mutex);
        for (const auto& entry : m_observers[name])
            handlers.push_back(entry.second);
    }
    for (const auto& handler : handlers)
        handler(name);
}

std::size_t NotificationCenter::observerCount(const std::string& name) {
    std::lock_guard guard(m_mutex);
    return m_observers[name].size();
}

} // namespace px
