// pxmenu config: list, show and edit the five menu lists and the preferences.
#include "Commands.h"
#include "ConfigLists.h"
#include "JsonValue.h"
#include "Store.h"
#include "config/MenuKeys.h"
#include "config/PXMenuManager.h"
#include "plist/ItemFields.h"

#include <fmt/format.h>

namespace px::cli {

namespace {

void printOverview() {
    for (const auto& list : configLists())
        fmt::print("{:<12} {:<18} {} entries\n", list.shortName, list.menuKey,
                   storedList(list.menuKey).size());
    for (const char* key : knownPreferences())
        fmt::print("pref  {:<22} {}\n", key,
                   toJson(userStore()->sharedDefaults().objectForKey(key)).dump());
}

void printList(const std::string& menuKey) {
    auto list = storedList(menuKey);
    for (std::size_t i = 0; i < list.size(); ++i) {
        bool off = fields::flag(list[i], "disabled");
        std::string shown = fields::string(list[i], "displayName");
        fmt::print("{:>3}  {:<3}  {}{}\n", i, off ? "off" : "on", entryName(list[i]),
                   shown.empty() ? "" : "  (" + shown + ")");
    }
}

void listCommand(const std::vector<std::string>& args) {
    if (args.empty()) return printOverview();
    if (isPreferences(args[0])) {
        for (const char* key : knownPreferences())
            fmt::print("{:<22} {}\n", key,
                       toJson(userStore()->sharedDefaults().objectForKey(key)).dump());
        return;
    }
    printList(menuKeyOf(args[0]));
}

void showCommand(const std::vector<std::string>& args) {
    if (isPreferences(args[0])) {
        if (args.size() < 2) throw UsageError("show pref needs a preference key");
        fmt::print("{}\n", toJson(userStore()->sharedDefaults().objectForKey(args[1])).dump(2));
        return;
    }
    std::string menuKey = menuKeyOf(args[0]);
    auto list = storedList(menuKey);
    if (args.size() < 2) {
        fmt::print("{}\n", toJson(plist::Value::makeArray(list)).dump(2));
        return;
    }
    fmt::print("{}\n", toJson(list[indexOfEntry(list, menuKey, args[1])]).dump(2));
}

} // namespace

void addConfigCommand(CLI::App& app, Outcome&) {
    auto* config =
        app.add_subcommand("config", "List, show and edit the menu lists and preferences");
    config->require_subcommand(1);

    auto* list = config->add_subcommand("list", "The lists and preferences, or one list's entries");
    static std::vector<std::string> listArgs;
    list->add_option("LIST", listArgs,
                     "right, new-file, folder-icon, common-app, common-path or pref")
        ->expected(0, 1);
    list->callback([] { listCommand(listArgs); });

    auto* show = config->add_subcommand("show", "One list, one entry or one preference as JSON");
    static std::vector<std::string> showArgs;
    show->add_option("ARGS", showArgs, "LIST [KEY] or pref KEY")->expected(1, 2)->required();
    show->callback([] { showCommand(showArgs); });

    addConfigEditCommands(*config);
}

} // namespace px::cli
