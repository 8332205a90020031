#pragma once

#include <optional>
#include <string>

// What the settings application does with the stored configuration when it starts.
namespace px {
class PXMenuManager;
}

namespace px::startup {

struct SettingsStart {
    // The menus were absent and the factory menus have just been written.
    bool seeded = false;
    // Why the settings file could not be read, when it could not; the factory menus then
    // replace it and the damaged file is kept at `brokenCopy`.
    std::optional<std::string> damage;
    std::string brokenCopy;
};

// Checks the store's settings file (`settingsFile`, the file its suite is kept in; empty when
// the suite is not a file), then applies the factory menus or their upgrade when due
// (PXDefaultData::setup).
SettingsStart prepareSettings(const PXMenuManager& store, const std::string& settingsFile);

} // namespace px::startup
