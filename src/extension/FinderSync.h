#pragma once

#include "config/PXMenuManager.h"
#include "platform/Platform.h"

#include <memory>
#include <string>

namespace px {

// What a host holds for as long as it runs: the store and services its requests use, the
// folders the file manager should consult the extension for (kept up to date as volumes are
// mounted), and the toolbar item's texts. Menus and commands are per request (buildMenu,
// dispatch); this object holds no selection.
class FinderSync {
  public:
    struct Options {
        // A file-manager session clears the cut list when it starts; the command line and the
        // extension process start many times per session and leave it alone.
        bool clearCutList = false;
    };

    FinderSync(std::shared_ptr<PXMenuManager> store, platform::Platform services, Options options);
    ~FinderSync();
    FinderSync(const FinderSync&) = delete;
    FinderSync& operator=(const FinderSync&) = delete;

    void setupDirectoryURLs();
    // A volume was mounted: the monitored folders are set up again a second later.
    void volumeChangeNoti();

    std::string toolbarItemName() const;
    std::string toolbarItemToolTip() const;
    std::string toolbarItemImage() const;

    const std::shared_ptr<PXMenuManager>& store() const { return m_store; }
    const platform::Platform& services() const { return m_services; }

  private:
    std::shared_ptr<PXMenuManager> m_store;
    platform::Platform m_services;
    // Lets a delayed set-up scheduled by volumeChangeNoti() see that this object has gone.
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
};

} // namespace px
