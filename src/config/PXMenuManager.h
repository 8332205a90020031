#pragma once

#include "config/PXMenuItem.h"
#include "config/Value.h"
#include "platform/Settings.h"

#include <cstddef>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

namespace px {

// The persistent menu configuration: the shared settings suite, the shared data folder, the
// edit operations on the five stored lists and the builders that turn them into items.
class PXMenuManager {
  public:
    static PXMenuManager& sharedInstance();

    // Points the manager at another suite and data folder (tests, other hosts). Without it the
    // suite is $XDG_CONFIG_HOME/pxmenu/group.plist and the folder $XDG_DATA_HOME/pxmenu.
    static void configure(std::shared_ptr<platform::Settings> suite, std::string sharedFolder);
    static void resetToDefaultLocations();

    static platform::Settings& sharedDefaults();
    static std::string sharedFolder();
    static PXMenuItem::List belongAppMenuArray();

    static std::string createFolderName(const std::string& name);
    static std::string appIconFolder() { return createFolderName("PXAppIcon"); }
    static std::string fileTemplateFolder() { return createFolderName("PXFileTemplate"); }
    static std::string folderIconFolder() { return createFolderName("PXFolderIcon"); }
    static std::string cacheFolder() { return createFolderName("PXCache"); }
    static std::string configManagerFolder() { return createFolderName("PXConfigManager"); }

    static bool existKey(std::string_view key, const PXMenuItem::List& items);
    static void addMenuKey(const std::string& menuKey, const plist::Value& dict, bool toTop);
    static void removeMenuKey(const std::string& menuKey, const std::string& itemKey);
    static void updateMenuKey(const std::string& menuKey, const std::string& itemKey,
                              const std::string& attrKey, const plist::Value& value);
    static void replaceMenuKey(const std::string& menuKey, const plist::Value& item);
    static void changePositionMenuKey(const std::string& menuKey, std::size_t fromIndex,
                                      std::size_t toIndex);
    static bool openMainApp();

    static PXMenuItem::List menuItemArray();
    static PXMenuItem::List newFileTemplateMenuArray(bool includeDisabled);
    static PXMenuItem::List folderIconMenuArray();
    static PXMenuItem::List commonAppMenuArray();
    static PXMenuItem::List commonPathMenuArray();

  private:
    PXMenuManager() = default;
    std::shared_ptr<platform::Settings> suite();
    void setBelongApps(PXMenuItem::List items);

    std::mutex m_mutex;
    std::shared_ptr<platform::Settings> m_suite;
    std::string m_sharedFolder;
    PXMenuItem::List m_belongAppMenuArray;
};

} // namespace px
