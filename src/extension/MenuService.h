#pragma once

#include "config/PXMenuManager.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace px {

// What a file manager asks for: the selected items (absolute local paths), the folder being
// shown and the menu kind (0 selected items, 1 folder background, 2 side pane, 3 toolbar).
struct MenuRequest {
    std::vector<std::string> paths;
    std::string target;
    int kind = 0;
};

// One entry of the menu a plugin shows. `title` is the entry's title as built; `label` is the
// same text as valid UTF-8, made unique among the submenus of the whole menu by invisible
// marks, since some toolkits find a submenu page by its label. `tooltip` is never empty (some
// hosts crash on an item without one). `keyPath` holds the keys from the top entry down to
// this one; the entry's command runs only while that path still leads to the tag.
struct ServiceEntry {
    std::string title;
    std::string label;
    std::string icon;
    std::string tooltip;
    std::int64_t tag = 0;
    std::vector<std::string> keyPath;
    bool separator = false;
    bool enabled = true;
    std::vector<ServiceEntry> children;
};

using ServiceMenu = std::vector<ServiceEntry>;

// The host-neutral menu service the file-manager plugins call on their main thread. It starts
// no thread and queues nothing; it writes nothing but the cut list's clearing when the host
// loads the plugin. Every failure inside it ends in an empty menu and a message on standard
// error, never in an exception. The host says how to open the user's store; the service opens
// it when it first reads it (not at load when no configuration exists yet) and keeps it.
class MenuService {
  public:
    using StoreOpener = std::function<std::shared_ptr<PXMenuManager>()>;
    explicit MenuService(StoreOpener openStore) : m_openStore(std::move(openStore)) {}

    // Once per file-manager session: clears the cut list and, when no configuration exists
    // yet, starts `pxmenu setup` detached.
    void hostLoaded() noexcept;
    ServiceMenu menu(const MenuRequest& request) noexcept;

  private:
    const std::shared_ptr<PXMenuManager>& store();

    StoreOpener m_openStore;
    std::shared_ptr<PXMenuManager> m_store;
};

} // namespace px
