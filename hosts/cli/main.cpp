#include "Commands.h"
#include "support/BuildConfig.h"

#include <cstdio>

int main(int argc, char** argv) {
    CLI::App app{"pxmenu: configurable context menus for Linux file managers", "pxmenu"};
    app.set_version_flag("--version", std::string(px::kProductVersion));
    app.require_subcommand(1);
    px::cli::Outcome outcome;
    px::cli::addSetupCommand(app, outcome);
    px::cli::addConfigCommand(app, outcome);
    px::cli::addMenuCommand(app, outcome);
    px::cli::addRunCommand(app, outcome);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        int status = app.exit(error);
        return status == 0 ? 0 : px::cli::kBadArguments;
    } catch (const px::cli::UsageError& error) {
        std::fprintf(stderr, "pxmenu: %s\n", error.what());
        return px::cli::kBadArguments;
    }
    return outcome.status;
}
