#pragma once

#include "extension/ExtensionFixture.h"
#include "support/FileHash.h"
#include "support_files/FakeUiLog.h"

#include <functional>

namespace px::test {

// A real FinderSync over the fake Ui, with the embed entries switched on, so that a test picks
// an entry as the user would and then looks at the files.
class EmbedFixture : public ExtensionFixture {
  protected:
    void SetUp() override {
        ExtensionFixture::SetUp();
        suite->setBool("is reviewed", true); // no review prompt among the answers
        enable("Embed in Folder");
        enable("Unembed Folder");
    }
    // Builds the menu for the selection, lets `beforeChoosing` change the files (the user
    // was slow), then picks the entry; false when the menu does not offer it.
    bool choose(std::vector<std::string> paths, const std::string& key,
                const std::function<void()>& beforeChoosing = {}) {
        select(std::move(paths), work.path());
        Menu menu = sync.menuForMenuKind(MenuKind::ContextualItems);
        const MenuEntry* entry = find(menu, key);
        if (!entry) return false;
        if (beforeChoosing) beforeChoosing();
        sync.onMenuItemAction(entry->tag);
        queue::runUntilIdle();
        return true;
    }

    Session sync{*this};
};

} // namespace px::test
