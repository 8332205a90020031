#pragma once

#include <functional>
#include <string>
#include <vector>

namespace px::platform {

// The desktop's workspace: opening addresses and folders, showing items in the file manager,
// and watching volume mounts.
class Workspace {
  public:
    virtual ~Workspace() = default;
    virtual bool openURL(const std::string& url) = 0;
    virtual bool revealInFileManager(const std::string& path) = 0;
    // Mounted, user-visible volumes' mount folders.
    virtual std::vector<std::string> mountedVolumes() = 0;
    // Calls `onMount` (on the main queue) whenever a volume is mounted; one observer.
    virtual void observeMounts(std::function<void()> onMount) = 0;
};

} // namespace px::platform
