#include "platform/linux/UserStore.h"

#include "config/PXDefaultData.h"
#include "platform/linux/PlistFileSettings.h"
#include "support/Xdg.h"

namespace px::platform {

std::shared_ptr<PXMenuManager> openUserStore() {
    const std::string folder = xdg::applicationSupport();
    // After a damaged file is set aside, the factory menus go into the emptied suite at once.
    auto restore = [folder](Settings& emptied) {
        PXMenuManager store(std::shared_ptr<Settings>(&emptied, [](Settings*) {}), folder);
        PXDefaultData(store).setup();
    };
    return std::make_shared<PXMenuManager>(
        std::make_shared<PlistFileSettings>(xdg::settingsFolder() + "/group.plist", restore),
        folder);
}

std::shared_ptr<Settings> openStandardDefaults() {
    return std::make_shared<PlistFileSettings>(xdg::settingsFolder() + "/extension.plist");
}

} // namespace px::platform
