#include "support/BuildConfig.h"

#include <CLI/CLI.hpp>
#include <cstdio>

int main(int argc, char** argv) {
    CLI::App app{"pxmenu: configurable context menus for Linux file managers", "pxmenu"};
    app.set_version_flag("--version", std::string(px::kProductVersion));
    app.require_subcommand(0, 1);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : 2;
    }
    return 0;
}
