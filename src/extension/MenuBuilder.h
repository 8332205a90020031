#pragma once

#include "config/PXMenuItem.h"
#include "extension/MenuEntry.h"
#include "extension/Request.h"

namespace px {

// A menu built for one request: the entries a host shows, and the configured items behind them
// (every item of the main list, in stored order, so that top-level tag N is item N-1; the
// items shown carry their generated children).
struct BuiltMenu {
    Menu entries;
    PXMenuItem::List items;
};

// Builds the menu for the request's selection, target and kind from one reading of its store.
// It writes nothing: the items it returns are its own.
BuiltMenu buildMenu(const Request& request);

// The submenu of generated or stored children, tagged below `parentTag`.
std::optional<Menu> submenuOf(const std::optional<PXMenuItem::List>& children,
                              const std::string& parentTag, bool icons);

} // namespace px
