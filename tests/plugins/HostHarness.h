#pragma once

#include <functional>
#include <string>
#include <vector>

namespace px::test {

// One menu item as its host reads it, and how to choose it.
struct HostItem {
    std::string name, label, tooltip, icon;
    bool sensitive = true;
    bool separator = false;
    std::function<void()> activate;
    std::vector<HostItem> children;
};
using HostItems = std::vector<HostItem>;

// One host's side of the plugin harness: its plugin loaded as the host loads it, asked for the
// items of selected files (URIs) and of a folder (kind 1, or 3 for a tool bar). No items: none.
bool loadHostPlugin(const std::string& path);
HostItems hostFileItems(const std::vector<std::string>& uris);
HostItems hostFolderItems(const std::string& uri, int kind);
extern const bool kHostHasToolbar;

} // namespace px::test
