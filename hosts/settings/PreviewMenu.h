#pragma once

#include "config/PXMenuManager.h"
#include "extension/MenuEntry.h"

#include <memory>
#include <string>
#include <vector>

namespace px::settings {

// The menu the file manager would show now for a selection in a folder: kind 0 for selected
// items, 1 for the folder's background. Built by the real menu builder from the store's lists.
Menu previewMenu(const std::shared_ptr<PXMenuManager>& store, int kind,
                 const std::vector<std::string>& selection, const std::string& target);

} // namespace px::settings
