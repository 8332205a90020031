#pragma once

#include "config/PXMenuManager.h"
#include "plist/Value.h"

#include <string>

namespace px {

// The stored menu lists as the builders and the editors read them. A list of the wrong type,
// or with an entry that is no dictionary or has no text for its name ("key", or "path" in the
// common paths), is damaged: it is reported once, the settings file is kept beside as
// "<name>.broken", and the factory list is stored in its place. A missing list stays missing.
plist::Value storedMenuList(const PXMenuManager& store, const std::string& menuKey);

// Checks every list as above; `setup` starts with it.
void repairDamagedMenuLists(const PXMenuManager& store);

} // namespace px
