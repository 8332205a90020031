#pragma once

#include <string>
#include <vector>

namespace px::platform {

// One application a person can start from the desktop's menus.
struct DesktopApplication {
    std::string name;        // the entry's Name, which the menus' application entries store
    std::string id;          // its desktop-file id ("org.gnome.TextEditor.desktop")
    std::string description; // its Comment; may be empty
    // Its icon: icon-theme names, best first, or one absolute image path; may be empty.
    std::vector<std::string> icons;
};

// The installed desktop entries that are shown in menus, sorted by name (case ignored), each
// name once.
std::vector<DesktopApplication> desktopApplications();

} // namespace px::platform
