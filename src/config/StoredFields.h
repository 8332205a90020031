#pragma once

#include "config/PXMenuItem.h"
#include "config/Value.h"

#include <algorithm>
#include <span>
#include <string>
#include <string_view>

namespace px::fields {

// One field of a stored item dictionary and the member of PXMenuItem it fills: a text (a
// wrong-typed value reads as empty) or a flag (converted as fields::flag converts).
struct StoredField {
    std::string_view name;
    std::string PXMenuItem::*text = nullptr;
    bool PXMenuItem::*flag = nullptr;
};

// Tables of fields must be sorted by name, in the order of the stored dictionaries' keys.
template <std::size_t N> constexpr bool isSortedByName(const StoredField (&table)[N]) {
    return std::is_sorted(
        std::begin(table), std::end(table),
        [](const StoredField& a, const StoredField& b) { return a.name < b.name; });
}

// Fills the item's members from the fields of `entry` (a dictionary) named in `table`, in one
// walk over both: a menu reads a dozen fields of every entry of every list it shows.
void copyStoredFields(PXMenuItem& item, const plist::Value& entry,
                      std::span<const StoredField> table);

} // namespace px::fields
