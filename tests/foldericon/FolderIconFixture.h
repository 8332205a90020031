#pragma once

#include "actions/CustomIcon.h"
#include "extension/ExtensionFixture.h"
#include "support/FileHash.h"

#include <functional>

namespace px::test {

// A real FinderSync over fakes of the desktop with the factory folder icons in the store, so a
// test can pick an icon from the "Folder Icon" submenu as the user would.
class FolderIconFixture : public ExtensionFixture {
  protected:
    void SetUp() override {
        ExtensionFixture::SetUp();
        suite->setBool("is reviewed", true); // no review prompt
        PXDefaultData(*store).recoverFolderIcon();
    }
    // The "Folder Icon" submenu for the selection; empty when the menu does not offer it.
    std::vector<MenuEntry> iconMenu(const std::vector<std::string>& paths) {
        select(paths, work.path());
        Menu menu = sync.menuForMenuKind(MenuKind::ContextualItems);
        const MenuEntry* parent = find(menu, "Folder Icon");
        return parent ? parent->children : std::vector<MenuEntry>{};
    }
    // Picks the submenu entry with the key, after `beforeChoosing` changed the files (the user
    // was slow); false when the submenu does not offer it.
    bool chooseIcon(const std::vector<std::string>& paths, const std::string& key,
                    const std::function<void()>& beforeChoosing = {}) {
        const auto children = iconMenu(paths);
        const MenuEntry* entry = find(children, key);
        if (!entry) return false;
        if (beforeChoosing) beforeChoosing();
        sync.onMenuItemAction(entry->tag);
        queue::runUntilIdle();
        return true;
    }
    // The metadata store answers here (a desktop session with GVfs).
    static bool metadataStoreWorks(const std::string& probe) {
        return !customicon::setMetadataIcon(probe, probe).isError() &&
               !customicon::removeMetadataIcon(probe).isError();
    }

    Session sync{*this};
};

} // namespace px::test
