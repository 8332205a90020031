// pxmenu config add / remove / set / move.
#include "Commands.h"
#include "ConfigLists.h"
#include "JsonValue.h"
#include "Store.h"
#include "config/MenuKeys.h"
#include "config/PXMenuManager.h"

#include <fmt/format.h>

namespace px::cli {

namespace {

struct EditOptions {
    std::vector<std::string> args;
    std::string json;
    std::string type;
    bool top = false;
    bool remove = false;
};

plist::Value entryFromArguments(const std::string& menuKey, const EditOptions& options) {
    if (!options.json.empty()) {
        plist::Value entry = parseValueText(options.json, "json");
        if (!entry.isDictionary()) throw UsageError("--json must be a JSON object");
        return entry;
    }
    if (options.args.size() < 2)
        throw UsageError("add needs LIST KEY [FIELD=VALUE...] or LIST --json OBJECT");
    plist::Value entry = plist::Value::makeMutableDictionary();
    entry.set(menuKey == menukey::kCommonPath ? "path" : "key", plist::Value(options.args[1]));
    for (std::size_t i = 2; i < options.args.size(); ++i) {
        auto equals = options.args[i].find('=');
        if (equals == std::string::npos || equals == 0)
            throw UsageError(fmt::format("'{}' is not FIELD=VALUE", options.args[i]));
        entry.set(options.args[i].substr(0, equals),
                  parseValueText(options.args[i].substr(equals + 1), ""));
    }
    return entry.frozen();
}

void addCommand(const EditOptions& options) {
    if (options.args.empty()) throw UsageError("add needs a LIST");
    std::string menuKey = menuKeyOf(options.args[0]);
    userStore()->addMenuKey(menuKey, entryFromArguments(menuKey, options), options.top);
}

void removeCommand(const EditOptions& options) {
    std::string menuKey = menuKeyOf(options.args[0]);
    indexOfEntry(storedList(menuKey), menuKey, options.args[1]);
    userStore()->removeMenuKey(menuKey, options.args[1]);
}

void setPreference(const EditOptions& options) {
    if (options.args.size() != 3 && !(options.remove && options.args.size() == 2))
        throw UsageError("set pref needs KEY VALUE (or KEY --remove)");
    auto& suite = userStore()->sharedDefaults();
    if (options.remove) return suite.removeObject(options.args[1]);
    suite.setObject(options.args[1], parseValueText(options.args[2], options.type));
}

void setCommand(const EditOptions& options) {
    if (isPreferences(options.args[0])) return setPreference(options);
    if (options.args.size() != 4 && !(options.remove && options.args.size() == 3))
        throw UsageError("set needs LIST KEY FIELD VALUE (or LIST KEY FIELD --remove)");
    std::string menuKey = menuKeyOf(options.args[0]);
    indexOfEntry(storedList(menuKey), menuKey, options.args[1]);
    plist::Value value =
        options.remove ? plist::Value() : parseValueText(options.args[3], options.type);
    userStore()->updateMenuKey(menuKey, options.args[1], options.args[2], value);
}

std::size_t indexArgument(const std::string& text, std::size_t limit) {
    auto value = parseValueText(text, "");
    if (!value.is(plist::Type::Integer) || value.integer() < 0 ||
        static_cast<std::size_t>(value.integer()) > limit)
        throw UsageError(fmt::format("'{}' is not an index from 0 to {}", text, limit));
    return static_cast<std::size_t>(value.integer());
}

void moveCommand(const EditOptions& options) {
    std::string menuKey = menuKeyOf(options.args[0]);
    std::size_t count = storedList(menuKey).size();
    if (count == 0) throw UsageError(fmt::format("'{}' is empty", menuKey));
    std::size_t from = indexArgument(options.args[1], count - 1);
    std::size_t to = indexArgument(options.args[2], count);
    userStore()->changePositionMenuKey(menuKey, from, to);
}

} // namespace

void addConfigEditCommands(CLI::App& config) {
    static EditOptions add, remove, set, move;

    auto* addCmd = config.add_subcommand(
        "add", "Add an entry: LIST KEY [FIELD=VALUE...] or LIST --json OBJECT");
    addCmd->add_option("ARGS", add.args)->required();
    addCmd->add_option("--json", add.json, "The whole entry as a JSON object");
    addCmd->add_flag("--top", add.top, "Insert at the top instead of the end");
    addCmd->callback([] { addCommand(add); });

    auto* removeCmd =
        config.add_subcommand("remove", "Remove the entry with a key (or path): LIST KEY");
    removeCmd->add_option("ARGS", remove.args)->expected(2)->required();
    removeCmd->callback([] { removeCommand(remove); });

    auto* setCmd =
        config.add_subcommand("set", "Set a field: LIST KEY FIELD VALUE, or pref KEY VALUE");
    setCmd->add_option("ARGS", set.args)->expected(2, 4)->required();
    setCmd->add_option("--type", set.type, "Force the value's type")
        ->check(CLI::IsMember({"string", "bool", "int", "real", "json"}));
    setCmd->add_flag("--remove", set.remove, "Remove the field or preference instead");
    setCmd->callback([] { setCommand(set); });

    auto* moveCmd = config.add_subcommand("move", "Move an entry: LIST FROM TO (indexes from 0)");
    moveCmd->add_option("ARGS", move.args)->expected(3)->required();
    moveCmd->callback([] { moveCommand(move); });
}

} // namespace px::cli
