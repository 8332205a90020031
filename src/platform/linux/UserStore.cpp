#include "platform/linux/UserStore.h"

#include "platform/linux/PlistFileSettings.h"
#include "support/Xdg.h"

namespace px::platform {

std::shared_ptr<PXMenuManager> openUserStore() {
    return std::make_shared<PXMenuManager>(
        std::make_shared<PlistFileSettings>(xdg::settingsFolder() + "/group.plist"),
        xdg::applicationSupport());
}

std::shared_ptr<Settings> openStandardDefaults() {
    return std::make_shared<PlistFileSettings>(xdg::settingsFolder() + "/extension.plist");
}

} // namespace px::platform
