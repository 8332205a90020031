#include "PreviewMenu.h"

#include "extension/FinderSync.h"
#include "platform/Platform.h"

#include <memory>

namespace px::settings {

Menu previewMenu(int kind, const std::vector<std::string>& selection, const std::string& target) {
    platform::current().controller =
        std::make_shared<platform::StaticFinderSyncController>(selection, target);
    FinderSync sync;
    return sync.menuForMenuKind(static_cast<MenuKind>(kind));
}

} // namespace px::settings
