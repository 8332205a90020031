// pxmenu menu: the menu for a selection, as an indented tree or as JSON.
#include "Commands.h"
#include "Request.h"
#include "extension/MenuBuilder.h"
#include "platform/linux/UserStore.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace px::cli {

namespace {

nlohmann::json toJson(const Menu& menu) {
    auto array = nlohmann::json::array();
    for (const auto& entry : menu)
        array.push_back({{"tag", entry.tag},
                         {"title", entry.title},
                         {"key", entry.key},
                         {"icon", entry.icon},
                         {"separator", entry.separator},
                         {"children", toJson(entry.children)}});
    return array;
}

void printTree(const Menu& menu, int depth) {
    std::string indent(static_cast<std::size_t>(depth) * 2, ' ');
    for (const auto& entry : menu) {
        if (entry.separator)
            fmt::print("{:>8}  {}{}\n", "", indent, entry.title);
        else
            fmt::print("{:>8}  {}{}  [{}]\n", entry.tag, indent, entry.title, entry.key);
        printTree(entry.children, depth + 1);
    }
}

} // namespace

void addMenuCommand(CLI::App& app, Outcome&) {
    auto* menu = app.add_subcommand("menu", "Print the menu for a selection");
    static RequestOptions request;
    static bool json = false;
    request.addOptions(*menu);
    menu->add_flag("--json", json, "Print the menu as JSON");
    menu->callback([] {
        platform::Platform services;
        services.standardDefaults = platform::openStandardDefaults();
        Request forMenu(request.toRequest(std::move(services)));
        Menu built = buildMenu(forMenu).entries;
        if (json)
            fmt::print("{}\n", toJson(built).dump(-1, ' ', false,
                                                  nlohmann::json::error_handler_t::replace));
        else
            printTree(built, 0);
    });
}

} // namespace px::cli
