#pragma once

#include <string>
#include <string_view>

// The user's base folders, read from the environment on every call so that tests (and a
// long-lived process whose environment changes) see the current values.
namespace px::xdg {

std::string homeDirectory();
std::string loginName();
std::string configHome();
std::string dataHome();
std::string cacheHome();
std::string runtimeDirectory();
// A user folder by its user-dirs.dirs name: "DESKTOP", "DOCUMENTS", "DOWNLOAD", "MUSIC",
// "PICTURES", "VIDEOS", "TEMPLATES", "PUBLICSHARE". Falls back to the usual English name.
std::string userDirectory(std::string_view name);

// The product's own places.
std::string settingsFolder();     // $XDG_CONFIG_HOME/pxmenu
std::string applicationSupport(); // $XDG_DATA_HOME/pxmenu

} // namespace px::xdg
