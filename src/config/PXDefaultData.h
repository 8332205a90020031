#pragma once

#include "platform/Settings.h"
#include "plist/Value.h"

#include <string>
#include <string_view>
#include <vector>

namespace px {

enum class VersionOrder { Ascending = -1, Same = 0, Descending = 1 };

// Dotted versions compared component by component as integers; a missing component is 0.
VersionOrder compareVersion(std::string_view receiver, std::string_view other);

class PXMenuManager;

// The factory menus and the rules that bring a stored configuration up to date.
class PXDefaultData {
  public:
    explicit PXDefaultData(const PXMenuManager& store) : m_store(store) {}

    void setup();
    void recover();
    void recoverRightMenu();
    void recoverNewFile();
    void recoverCommonApp();
    void recoverFolderIcon();
    void recoverCommonPath();
    void update();

    static const std::vector<std::string>& foreverKeyArray();
    static plist::Value defaultMainMenu();
    static plist::Value defaultNewFileMenu();
    static plist::Value defaultCommonAppMenu();
    static plist::Value defaultFolderIconMenu();

    // The running product version that seeds and upgrades the lists.
    static std::string currentVersion();

  private:
    // Stores the factory list under the menu key, without the entries it deletes.
    void addFactoryList(const std::string& menuKey, const plist::Value& defaultMenu);
    // Brings the stored list up to date with the factory list's changed entries.
    void upgradeList(const std::string& menuKey, const plist::Value& defaultMenu);
    void upgradeEntry(plist::Array& stored, const plist::Value& factory, std::size_t position);
    platform::Settings& suite() const;

    const PXMenuManager& m_store;
};

} // namespace px
