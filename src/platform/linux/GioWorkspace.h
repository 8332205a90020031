#pragma once

#include "platform/Workspace.h"

#include <memory>

namespace px::platform {

// The desktop workspace through GIO: default handlers for addresses, the file manager's
// D-Bus interface to show items, and the volume monitor for mounts. Mount events are watched
// on a thread of their own running a GLib main loop, and reported on the main queue.
class GioWorkspace final : public Workspace {
  public:
    GioWorkspace();
    ~GioWorkspace() override;

    bool openURL(const std::string& url) override;
    bool revealInFileManager(const std::string& path) override;
    std::vector<std::string> mountedVolumes() override;
    void observeMounts(std::function<void()> onMount) override;

  private:
    class MountWatcher;
    std::unique_ptr<MountWatcher> m_watcher;
};

} // namespace px::platform
