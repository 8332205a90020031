#pragma once

#include "config/Value.h"

#include <string>
#include <string_view>
#include <vector>

namespace px {

enum class VersionOrder { Ascending = -1, Same = 0, Descending = 1 };

// Dotted versions compared component by component as integers; a missing component is 0.
VersionOrder compareVersion(std::string_view receiver, std::string_view other);

// The factory menus and the rules that bring a stored configuration up to date.
class PXDefaultData {
  public:
    static void setup();
    static void recover();
    static void recoverRightMenu();
    static void recoverNewFile();
    static void recoverCommonApp();
    static void recoverFolderIcon();
    static void recoverCommonPath();
    static void update();

    static const std::vector<std::string>& foreverKeyArray();
    static plist::Value defaultMainMenu();
    static plist::Value defaultNewFileMenu();
    static plist::Value defaultCommonAppMenu();
    static plist::Value defaultFolderIconMenu();

    // The running product version that seeds and upgrades the lists.
    static std::string currentVersion();

    static void _addMenuKey(const std::string& menuKey, const plist::Value& defaultMenu);
    static void _updateMenuKey(const std::string& menuKey, const plist::Value& defaultMenu);
};

} // namespace px
