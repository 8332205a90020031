// The request sequence of the command line's `run`, in one place until the core offers it.
#include "RunRequest.h"

#include "extension/FinderSync.h"
#include "platform/Platform.h"
#include "platform/linux/GioApplications.h"
#include "platform/linux/GioWorkspace.h"
#include "platform/linux/TerminalServices.h"

#include <CLI/CLI.hpp>
#include <cstdlib>
#include <ostream>
#include <unistd.h>

namespace px::gui {

namespace {

constexpr int kBadArguments = 2;
constexpr int kTagNotFound = 4;

struct RunArguments {
    std::int64_t tag = 0;
    int kind = 0;
    std::string target;
    std::vector<std::string> paths;
};

std::optional<RunArguments> parse(const std::vector<std::string>& arguments, std::ostream& errors) {
    RunArguments parsed;
    CLI::App app{"pxmenu-extension request", "pxmenu"};
    auto* run = app.add_subcommand("run");
    run->add_option("--tag", parsed.tag)->required();
    run->add_option("--kind", parsed.kind)->check(CLI::Range(0, 3));
    run->add_option("--target", parsed.target)->required();
    run->add_option("PATH", parsed.paths);
    app.require_subcommand(1);
    std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
    try {
        app.parse(reversed);
    } catch (const CLI::ParseError& error) {
        errors << "pxmenu: the request's arguments are not understood: " << error.what() << '\n';
        return std::nullopt;
    }
    return parsed;
}

void applyEnvironment(const handoff::Request& request) {
    for (const auto& variable : request.environment) {
        const auto equals = variable.find('=');
        ::setenv(variable.substr(0, equals).c_str(), variable.c_str() + equals + 1, 1);
    }
}

} // namespace

int startRequest(const handoff::Request& request, std::ostream& errors,
                 std::shared_ptr<FinderSync>& sync) {
    auto arguments = parse(request.arguments, errors);
    if (!arguments) return kBadArguments;
    if (::chdir(request.folder.c_str()) != 0) {
        errors << "pxmenu: the request's working folder " << request.folder
               << " is gone; nothing was done\n";
        return kBadArguments;
    }
    applyEnvironment(request);
    auto& current = platform::current();
    current.workspace = std::make_shared<platform::GioWorkspace>();
    current.applications = std::make_shared<platform::GioApplications>();
    current.services = std::make_shared<platform::TerminalServices>();
    current.controller =
        std::make_shared<platform::StaticFinderSyncController>(arguments->paths, arguments->target);
    sync = std::make_shared<FinderSync>();
    Menu menu = sync->menuForMenuKind(static_cast<MenuKind>(arguments->kind));
    if (!findEntryWithTag(menu, arguments->tag)) {
        errors << "pxmenu: no menu entry has the tag " << arguments->tag << " for this selection\n";
        return kTagNotFound;
    }
    sync->onMenuItemAction(arguments->tag);
    return 0;
}

} // namespace px::gui
