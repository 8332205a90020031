#include "PreviewMenu.h"

#include "extension/MenuBuilder.h"
#include "platform/linux/UserStore.h"

namespace px::settings {

Menu previewMenu(const std::shared_ptr<PXMenuManager>& store, int kind,
                 const std::vector<std::string>& selection, const std::string& target) {
    Request::Options options;
    options.selection = selection;
    options.target = target;
    options.kind = static_cast<MenuKind>(kind);
    // The folder grants decide the common-path submenus, as they do in the file manager.
    options.services.standardDefaults = platform::openStandardDefaults();
    options.store = store;
    Request request(std::move(options));
    return buildMenu(request).entries;
}

} // namespace px::settings
