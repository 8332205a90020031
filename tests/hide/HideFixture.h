#pragma once

#include "extension/ExtensionFixture.h"
#include "platform/fake/FakePasteboard.h"

#include <sys/stat.h>

namespace px::test {

// A real FinderSync over fakes of the desktop, with the visibility, lock and delete entries
// switched on, so that a test can pick an entry as the user would and look at the files.
class HideFixture : public ExtensionFixture {
  protected:
    void SetUp() override {
        ExtensionFixture::SetUp();
        suite->setBool("is reviewed", true); // no review prompt among the answers
        platform::current().pasteboard = pasteboard;
        for (const char* key : {"Delete", "Lock and Unlock", "Hide Selected Files",
                                "Hide All Files", "Unhide All Files", "System Hide Files"})
            enable(key);
    }
    // Picks the top-level entry with the key from the menu for the current selection; false
    // when the menu does not offer it.
    bool choose(MenuKind kind, const std::string& key) {
        Menu menu = sync.menuForMenuKind(kind);
        const MenuEntry* entry = find(menu, key);
        if (!entry) return false;
        sync.onMenuItemAction(entry->tag);
        queue::runUntilIdle();
        return true;
    }
    bool onItems(std::vector<std::string> paths, const std::string& key) {
        select(std::move(paths), work.path());
        return choose(MenuKind::ContextualItems, key);
    }
    bool onBackground(const std::string& folder, const std::string& key) {
        select({}, folder);
        return choose(MenuKind::ContextualContainer, key);
    }
    static unsigned modeOf(const std::string& path) {
        struct stat info {};
        return ::stat(path.c_str(), &info) == 0 ? (info.st_mode & 07777) : 0;
    }

    FinderSync sync;
    std::shared_ptr<platform::FakePasteboard> pasteboard =
        std::make_shared<platform::FakePasteboard>();
};

} // namespace px::test
