#pragma once

#include "support_files/ActionsFixture.h"

namespace px::test {

// A real FinderSync over the fakes, with the factory menus, a scratch folder and HOME pointed at
// a temporary folder.
class NewFileFixture : public ActionsFixture {
  protected:
    // Runs the action for the item as dispatch does, with `selection` selected.
    void create(const PXMenuItem::Ptr& item, std::vector<std::string> selection) {
        select(std::move(selection), "");
        Session sync{*this};
        commands::createFile(sync.cx(), *item);
        queue::runUntilIdle();
    }
    void createIn(const PXMenuItem::Ptr& item) { create(item, {work.path()}); }
    // The factory entry with the key (extension), as the menu lists build it.
    PXMenuItem::Ptr templateItem(const std::string& key) {
        for (auto& item : store->newFileTemplateMenuArray(true))
            if (item->key == key) return item;
        ADD_FAILURE() << "no template " << key;
        return PXMenuItem::create(key);
    }
    static PXMenuItem::Ptr itemWith(const std::string& key, const std::string& ext,
                                    const std::string& templatePath = {}) {
        auto item = PXMenuItem::create(key);
        item->ext = ext;
        item->templatePath = templatePath;
        return item;
    }
};

} // namespace px::test
