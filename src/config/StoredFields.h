#pragma once

#include "config/PXMenuItem.h"
#include "plist/Value.h"

#include <algorithm>
#include <array>
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

// Tables of fields must be sorted by name, in the order of the stored dictionaries' keys, and
// name each field once.
constexpr bool isSortedByName(std::span<const StoredField> table) {
    return std::adjacent_find(table.begin(), table.end(),
                              [](const StoredField& a, const StoredField& b) {
                                  return !(a.name < b.name);
                              }) == table.end();
}

// One table holding the fields of two sorted tables, itself sorted: a list whose entries carry
// the fields of another list and some more is described by the other's table and the extras.
template <std::size_t N, std::size_t M>
constexpr std::array<StoredField, N + M> joinFields(const std::array<StoredField, N>& first,
                                                    const std::array<StoredField, M>& second) {
    std::array<StoredField, N + M> joined{};
    std::merge(first.begin(), first.end(), second.begin(), second.end(), joined.begin(),
               [](const StoredField& a, const StoredField& b) { return a.name < b.name; });
    return joined;
}

// Fills the item's members from the fields of `entry` (a dictionary) named in `table`, in one
// walk over both: a menu reads a dozen fields of every entry of every list it shows.
void copyStoredFields(PXMenuItem& item, const plist::Value& entry,
                      std::span<const StoredField> table);

} // namespace px::fields
