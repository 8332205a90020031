#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace px {

// One entry of a built menu, independent of any toolkit: plugins and the command line render
// it. The tag finds the configured item again when the entry is chosen.
struct MenuEntry {
    std::string title;
    std::string icon; // an icon reference: image path or icon-theme name; empty for none
    std::string key;
    std::int64_t tag = 0;
    bool separator = false;
    bool enabled = true;
    std::vector<MenuEntry> children;
};

using Menu = std::vector<MenuEntry>;

// The entry carrying a tag anywhere in the menu; separators are never found.
const MenuEntry* findEntryWithTag(const Menu& menu, std::int64_t tag);
// The keys from the top-level entry down to the entry carrying the tag; empty when no entry
// carries it.
std::vector<std::string> keyPathOfTag(const Menu& menu, std::int64_t tag);

} // namespace px
