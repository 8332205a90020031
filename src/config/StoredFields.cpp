#include "config/StoredFields.h"

#include "plist/ItemFields.h"

namespace px::fields {

namespace {

bool flagValue(const plist::Value& value) {
    if (value.isNumber()) return value.boolean();
    return value.isString() && stringIsTrue(value.string());
}

void copyField(PXMenuItem& item, const StoredField& field, const plist::Value& value) {
    if (field.text)
        item.*field.text = value.isString() ? value.string() : std::string();
    else
        item.*field.flag = flagValue(value);
}

} // namespace

void copyStoredFields(PXMenuItem& item, const plist::Value& entry,
                      std::span<const StoredField> table) {
    auto field = table.begin();
    for (const auto& [name, value] : entry.dictionary()) {
        while (field != table.end() && field->name < name)
            ++field;
        if (field == table.end()) return;
        if (field->name == name) copyField(item, *field, value);
    }
}

} // namespace px::fields
