#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace px {

// The handler name that a notification name maps to: "a.b.c" gives "handleSignal_b_c:",
// "a.b" gives "handleSignal_a_b:", anything else "handleSignal:".
std::string selWithName(const std::string& name);

// A process-wide centre of named notifications. Observers are identified by an opaque owner
// pointer; adding the same owner for a name again replaces its handler, so nothing is
// registered twice. Handlers run on the thread that posts.
class NotificationCenter {
  public:
    using Handler = std::function<void(const std::string& name)>;

    static NotificationCenter& defaultCenter();

    void addNotification(const void* owner, const std::string& name, Handler handler);
    void removeNotification(const void* owner, const std::string& name);
    void removeObserver(const void* owner);
    void post(const std::string& name);
    std::size_t observerCount(const std::string& name);

  private:
    std::mutex m_mutex;
    std::map<std::string, std::vector<std::pair<const void*, Handler>>> m_observers;
};

} // namespace px
