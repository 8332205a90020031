#include "Commands.h"
#include "Store.h"
#include "config/PXDefaultData.h"

namespace px::cli {

void addSetupCommand(CLI::App& app, Outcome&) {
    auto* setup =
        app.add_subcommand("setup", "Seed the factory menus or upgrade the configuration");
    setup->callback([] { PXDefaultData(*userStore()).setup(); });
}

} // namespace px::cli
