#pragma once

#include <optional>
#include <string>
#include <vector>

// Finding the image file of a freedesktop icon-theme name, without a toolkit: the user's theme
// and the themes it inherits, then "Adwaita" and "hicolor", searched in ~/.icons and the
// "icons" folders of the XDG data folders, then /usr/share/pixmaps.
namespace px::icontheme {

// The themes searched, in order: the icon theme of the user's GTK settings (settings.ini), the
// themes it inherits, "Adwaita", "hicolor"; each once, and only those that are installed.
std::vector<std::string> themeChain();

// The file for the first of `names` that a theme of the chain has, from the theme's folder
// whose size is closest to `size` pixels (PNG, SVG or XPM). Themes are tried in order and,
// within a theme, the names in order, so a theme's generic icon wins over a later theme's
// specific one.
std::optional<std::string> findIconFile(const std::vector<std::string>& names, int size);

} // namespace px::icontheme
