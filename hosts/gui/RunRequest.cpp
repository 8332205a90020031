// A handed-over `run` request, carried out through the core's request runner.
#include "RunRequest.h"

#include "actions/RunRequest.h"
#include "extension/Request.h"
#include "platform/linux/GioApplications.h"
#include "platform/linux/GioWorkspace.h"
#include "platform/linux/TerminalServices.h"
#include "platform/linux/UserStore.h"

#include <CLI/CLI.hpp>
#include <cstdlib>
#include <ostream>
#include <unistd.h>

namespace px::gui {

namespace {

constexpr int kBadArguments = 2;
constexpr int kTagNotFound = 4;
constexpr int kEntryChanged = 5;

struct RunArguments {
    std::int64_t tag = 0;
    int kind = 0;
    std::string target;
    std::vector<std::string> keys;
    std::vector<std::string> paths;
};

std::optional<RunArguments> parse(const std::vector<std::string>& arguments, std::ostream& errors) {
    RunArguments parsed;
    CLI::App app{"pxmenu-extension request", "pxmenu"};
    auto* run = app.add_subcommand("run");
    run->add_option("--tag", parsed.tag)->required();
    run->add_option("--kind", parsed.kind)->check(CLI::Range(0, 3));
    run->add_option("--target", parsed.target)->required();
    run->add_option("--key", parsed.keys);
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

Request::Options requestOptions(RunArguments arguments, platform::Platform services) {
    Request::Options options;
    options.selection = std::move(arguments.paths);
    options.target = std::move(arguments.target);
    options.kind = static_cast<MenuKind>(arguments.kind);
    options.keyPath = std::move(arguments.keys);
    services.workspace = std::make_shared<platform::GioWorkspace>();
    services.applications = std::make_shared<platform::GioApplications>();
    services.standardDefaults = platform::openStandardDefaults();
    options.store = platform::openUserStore();
    const auto& suite = options.store->sharedSuite();
    services.services = std::make_shared<platform::TerminalServices>(
        platform::TerminalServices::preferenceIn(suite),
        platform::TerminalServices::preferenceIn(suite, "terminal"));
    options.services = std::move(services);
    return options;
}

} // namespace

int runHandedRequest(const handoff::Request& request, platform::Platform services,
                     std::ostream& errors) {
    auto arguments = parse(request.arguments, errors);
    if (!arguments) return kBadArguments;
    if (::chdir(request.folder.c_str()) != 0) {
        errors << "pxmenu: the request's working folder " << request.folder
               << " is gone; nothing was done\n";
        return kBadArguments;
    }
    applyEnvironment(request);
    const std::int64_t tag = arguments->tag;
    Request forRun(requestOptions(std::move(*arguments), std::move(services)));
    switch (runRequest(forRun, tag)) {
    case DispatchResult::Ran:
        return 0;
    case DispatchResult::TagNotFound:
        errors << "pxmenu: no menu entry has the tag " << tag << " for this selection\n";
        return kTagNotFound;
    case DispatchResult::KeyPathChanged:
        errors << "pxmenu: the entry with the tag " << tag
               << " has changed since the menu was shown; nothing was done\n";
        return kEntryChanged;
    }
    return 0;
}

} // namespace px::gui
