#include "Commands.h"
#include "config/PXMenuManager.h"

#include <fmt/format.h>

namespace px::cli {

// Until the menu builder arrives this prints the enabled main-menu entries in order.
void addMenuCommand(CLI::App& app, Outcome&) {
    auto* menu = app.add_subcommand("menu", "Print the menu for a selection");
    static std::vector<std::string> paths;
    static int kind = 0;
    static std::string target;
    menu->add_option("--kind", kind, "Menu kind: 0 items, 1 folder background, 2 sidebar, 3 toolbar")
        ->check(CLI::Range(0, 3));
    menu->add_option("--target", target, "The folder being shown");
    menu->add_option("PATH", paths, "Selected items");
    menu->callback([] {
        int tag = 0;
        for (const auto& item : PXMenuManager::menuItemArray())
            fmt::print("{:>6}  {}\n", ++tag, item->key);
    });
}

} // namespace px::cli
