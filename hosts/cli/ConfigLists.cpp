#include "ConfigLists.h"

#include "Commands.h"
#include "JsonValue.h"
#include "Store.h"
#include "config/MenuKeys.h"
#include "config/PXMenuManager.h"
#include "plist/ItemFields.h"
#include "config/StoredLists.h"

#include <charconv>
#include <fmt/format.h>

namespace px::cli {

const std::array<ListName, 5>& configLists() {
    static constexpr std::array<ListName, 5> lists{{{"right", menukey::kRightMenu},
                                                    {"new-file", menukey::kNewFile},
                                                    {"folder-icon", menukey::kFolderIcon},
                                                    {"common-app", menukey::kCommonApp},
                                                    {"common-path", menukey::kCommonPath}}};
    return lists;
}

const std::array<const char*, 12>& knownPreferences() {
    static constexpr std::array<const char*, 12> keys{
        "pref check0",     "pref check1",    "pref check2",   "pref check3",
        "pref check4",     "pref check6",    "open new file", "common path next menu",
        "second terminal", "update version", "use count",     "is reviewed"};
    return keys;
}

bool isPreferences(const std::string& name) {
    return name == "pref" || name == "prefs";
}

std::string menuKeyOf(const std::string& name) {
    for (const auto& list : configLists())
        if (name == list.shortName || name == list.menuKey) return list.menuKey;
    throw UsageError(fmt::format(
        "unknown list '{}'; use right, new-file, folder-icon, common-app, common-path or pref",
        name));
}

plist::Array storedList(const std::string& menuKey) {
    plist::Value list = storedMenuList(*userStore(), menuKey);
    return list ? list.array() : plist::Array{};
}

std::string entryName(const plist::Value& entry) {
    std::string key = fields::string(entry, "key");
    return key.empty() ? fields::string(entry, "path") : key;
}

std::size_t indexOfEntry(const plist::Array& list, const std::string& menuKey,
                         const std::string& key) {
    for (std::size_t i = 0; i < list.size(); ++i)
        if (fields::string(list[i], "key") == key || fields::string(list[i], "path") == key)
            return i;
    throw UsageError(fmt::format("no entry '{}' in '{}'", key, menuKey));
}

namespace {

template <typename Number> std::optional<Number> parseNumber(const std::string& text) {
    Number number{};
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || text.empty())
        return std::nullopt;
    return number;
}

plist::Value parseJson(const std::string& text) {
    auto json = nlohmann::json::parse(text, nullptr, false);
    if (json.is_discarded()) throw UsageError(fmt::format("'{}' is not valid JSON", text));
    return fromJson(json);
}

plist::Value parseBool(const std::string& text) {
    if (text == "true" || text == "yes" || text == "1") return plist::Value(true);
    if (text == "false" || text == "no" || text == "0") return plist::Value(false);
    throw UsageError(fmt::format("'{}' is not a boolean (true or false)", text));
}

plist::Value parseTyped(const std::string& text, const std::string& type) {
    if (type == "string") return plist::Value(text);
    if (type == "bool") return parseBool(text);
    if (type == "json") return parseJson(text);
    if (type == "int")
        if (auto number = parseNumber<std::int64_t>(text)) return plist::Value(*number);
    if (type == "real")
        if (auto number = parseNumber<double>(text)) return plist::Value(*number);
    throw UsageError(fmt::format("'{}' is not a value of type {}", text, type));
}

} // namespace

plist::Value parseValueText(const std::string& text, const std::string& type) {
    if (!type.empty()) return parseTyped(text, type);
    if (text == "true" || text == "false") return plist::Value(text == "true");
    if (auto integer = parseNumber<std::int64_t>(text)) return plist::Value(*integer);
    if (auto real = parseNumber<double>(text)) return plist::Value(*real);
    if (!text.empty() && (text.front() == '[' || text.front() == '{')) return parseJson(text);
    return plist::Value(text);
}

} // namespace px::cli
