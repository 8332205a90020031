#include "config/ConfigExchange.h"

#include "config/MenuKeys.h"
#include "plist/PlistCodec.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>

namespace px::exchange {

namespace {

constexpr std::array kListKeys{menukey::kRightMenu, menukey::kNewFile, menukey::kFolderIcon,
                               menukey::kCommonApp, menukey::kCommonPath};
constexpr std::array<std::string_view, 7> kFlagPreferences{
    "pref check0", "pref check1", "pref check2",  "pref check3",
    "pref check4", "pref check6", "open new file"};
constexpr std::array<std::string_view, 2> kTextPreferences{"terminal", "second terminal"};

constexpr std::array<std::string_view, 10> kTextFields{
    "appName",  "displayName", "ext",  "fileName",           "icon",
    "iconPath", "key",         "path", "is changed version", "templatePath"};
constexpr std::array<std::string_view, 6> kFlagFields{
    "disabled", "disabledAuth", "disabledOpenPath", "mainMenuNewFile", "special", "toMainMenu"};

template <typename Names> bool contains(const Names& names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

bool isFlag(const plist::Value& value) {
    return value.is(plist::Type::Boolean) || value.isNumber();
}

ErrorOr<void> checkField(const std::string& where, const std::string& field,
                         const plist::Value& value) {
    if (contains(kTextFields, field) && !value.isString())
        return Error{fmt::format("{}: \"{}\" is not a text", where, field)};
    if (contains(kFlagFields, field) && !isFlag(value))
        return Error{fmt::format("{}: \"{}\" is not a yes/no value", where, field)};
    if (field == "cutPaths") {
        if (!value.isArray()) return Error{fmt::format("{}: \"cutPaths\" is not a list", where)};
        for (const auto& path : value.array())
            if (!path.isString())
                return Error{fmt::format("{}: \"cutPaths\" holds something not a path", where)};
    }
    return {};
}

ErrorOr<void> checkList(const std::string& menuKey, const plist::Value& list) {
    if (!list.isArray()) return Error{fmt::format("\"{}\" is not a list", menuKey)};
    for (std::size_t i = 0; i < list.array().size(); ++i) {
        const std::string where = fmt::format("\"{}\" entry {}", menuKey, i + 1);
        const plist::Value& entry = list.array()[i];
        if (!entry.isDictionary()) return Error{where + " is not a dictionary"};
        for (const auto& [field, value] : entry.dictionary())
            TRY(checkField(where, field, value));
    }
    return {};
}

ErrorOr<void> checkPreference(const std::string& key, const plist::Value& value) {
    if (contains(kFlagPreferences, key) && !isFlag(value))
        return Error{fmt::format("\"{}\" is not a yes/no value", key)};
    if (contains(kTextPreferences, key) && !value.isString())
        return Error{fmt::format("\"{}\" is not a text", key)};
    if (key == menukey::kCommonPathNextMenu && !value.is(plist::Type::Integer))
        return Error{fmt::format("\"{}\" is not a whole number", key)};
    return {};
}

bool isListKey(std::string_view key) {
    return contains(kListKeys, key);
}

} // namespace

const std::vector<std::string>& configurationKeys() {
    static const std::vector<std::string> keys = [] {
        std::vector<std::string> all(kListKeys.begin(), kListKeys.end());
        all.insert(all.end(), kFlagPreferences.begin(), kFlagPreferences.end());
        all.emplace_back(menukey::kCommonPathNextMenu);
        all.insert(all.end(), kTextPreferences.begin(), kTextPreferences.end());
        return all;
    }();
    return keys;
}

plist::Value currentConfiguration(platform::Settings& suite) {
    plist::Dictionary entries;
    for (const auto& key : configurationKeys())
        if (plist::Value value = suite.objectForKey(key)) entries.emplace(key, value);
    return plist::Value::makeDictionary(std::move(entries));
}

ErrorOr<plist::Value> checkedConfiguration(const plist::Value& root) {
    if (!root.isDictionary()) return Error{"the file does not hold a dictionary"};
    plist::Dictionary known;
    for (const auto& key : configurationKeys()) {
        plist::Value value = root.get(key);
        if (!value) continue;
        if (isListKey(key))
            TRY(checkList(key, value));
        else
            TRY(checkPreference(key, value));
        known.emplace(key, value);
    }
    if (std::none_of(kListKeys.begin(), kListKeys.end(),
                     [&](const char* key) { return known.count(key) > 0; }))
        return Error{"the file holds none of the menu lists"};
    return plist::Value::makeDictionary(std::move(known));
}

ErrorOr<void> exportConfiguration(platform::Settings& suite, const std::string& path) {
    return plist::writeFileAtomically(path, currentConfiguration(suite));
}

ErrorOr<void> importConfiguration(platform::Settings& suite, const std::string& path) {
    plist::Value root = TRY(plist::readFile(path));
    plist::Value configuration = TRY(checkedConfiguration(root));
    for (const auto& key : configurationKeys())
        suite.setObject(key, configuration.get(key));
    return {};
}

} // namespace px::exchange
