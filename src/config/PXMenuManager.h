#pragma once

#include "config/PXMenuItem.h"
#include "platform/Settings.h"
#include "plist/Value.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace px {

// The persistent menu configuration: the shared settings suite, the shared data folder, the
// edit operations on the five stored lists and the builders that turn them into items. The host
// makes one (on the user's files, or on a test's suite and folder) and hands it down with each
// request; it holds nothing but those two, so it may be shared between threads as its suite is.
class PXMenuManager {
  public:
    PXMenuManager(std::shared_ptr<platform::Settings> suite, std::string sharedFolder);

    platform::Settings& sharedDefaults() const { return *m_suite; }
    const std::shared_ptr<platform::Settings>& sharedSuite() const { return m_suite; }
    const std::string& sharedFolder() const { return m_sharedFolder; }

    // The folder `name` inside the shared folder, made when missing.
    std::string createFolderName(const std::string& name) const;
    std::string appIconFolder() const { return createFolderName("PXAppIcon"); }
    std::string fileTemplateFolder() const { return createFolderName("PXFileTemplate"); }
    std::string folderIconFolder() const { return createFolderName("PXFolderIcon"); }
    std::string cacheFolder() const { return createFolderName("PXCache"); }
    std::string configManagerFolder() const { return createFolderName("PXConfigManager"); }

    static bool existKey(std::string_view key, const PXMenuItem::List& items);
    void addMenuKey(const std::string& menuKey, const plist::Value& dict, bool toTop) const;
    void removeMenuKey(const std::string& menuKey, const std::string& itemKey) const;
    void updateMenuKey(const std::string& menuKey, const std::string& itemKey,
                       const std::string& attrKey, const plist::Value& value) const;
    void replaceMenuKey(const std::string& menuKey, const plist::Value& item) const;
    void changePositionMenuKey(const std::string& menuKey, std::size_t fromIndex,
                               std::size_t toIndex) const;

    PXMenuItem::List menuItemArray() const;
    PXMenuItem::List newFileTemplateMenuArray(bool includeDisabled) const;
    PXMenuItem::List folderIconMenuArray() const;
    PXMenuItem::List commonAppMenuArray() const;
    PXMenuItem::List commonPathMenuArray() const;
    // The entries of the main list that open an application or a terminal window, in order.
    static PXMenuItem::List belongAppMenuArray(const PXMenuItem::List& mainItems);

  private:
    PXMenuItem::List
    buildList(const char* menuKey, bool includeDisabled,
              const std::function<void(PXMenuItem&, const plist::Value&)>& copyFields) const;
    void editList(const std::string& menuKey,
                  const std::function<void(plist::Array&)>& change) const;

    std::shared_ptr<platform::Settings> m_suite;
    std::string m_sharedFolder;
};

} // namespace px
