#pragma once

#include <functional>
#include <string>
#include <vector>

// Application entries whose application is not installed on this machine.
namespace px {
class PXMenuManager;
}

namespace px::entries {

using InstalledTest = std::function<bool(const std::string& appName)>;

// The keys of the enabled entries of the store's "array common app" that come from the factory list
// and whose application `isInstalled` does not find, in list order.
std::vector<std::string> missingFactoryApplications(const PXMenuManager& store,
                                                    const InstalledTest& isInstalled);

// Switches the entries with these keys of a list off ("disabled" true), one locked edit each.
void switchOff(const PXMenuManager& store, const std::string& menuKey,
               const std::vector<std::string>& keys);

} // namespace px::entries
