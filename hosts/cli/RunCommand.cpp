// pxmenu run: choose a menu entry by its tag and carry out its command.
#include "Commands.h"
#include "Request.h"
#include "actions/RunRequest.h"
#include "platform/linux/GioApplications.h"
#include "platform/linux/GioWorkspace.h"
#include "platform/linux/ScriptedUi.h"
#include "platform/linux/TerminalServices.h"
#include "platform/linux/TerminalUi.h"
#include "platform/linux/TranscriptPasteboard.h"
#include "platform/linux/UserStore.h"

#include <cstdio>
#include <fmt/format.h>
#include <iostream>

namespace px::cli {

namespace {

void useScriptedUi(platform::Platform& services, const std::string& file) {
    auto answers = platform::loadScript(file);
    if (answers.isError()) throw UsageError(answers.error().message);
    auto transcript = std::make_shared<platform::Transcript>();
    services.ui = std::make_shared<platform::ScriptedUi>(answers.releaseValue(), transcript);
    services.pasteboard = std::make_shared<platform::TranscriptPasteboard>(transcript);
}

// The prompts and clipboard of the mode; true for the terminal, where a person is working.
bool useUi(platform::Platform& services, const std::string& mode) {
    if (mode.rfind("script:", 0) == 0) {
        useScriptedUi(services, mode.substr(7));
        return false;
    }
    if (mode == "gui")
        throw UsageError(
            "--ui gui needs the graphical extension process, which this build does not include; "
            "use --ui terminal or --ui script:FILE");
    if (mode != "terminal") throw UsageError(fmt::format("unknown --ui mode '{}'", mode));
    services.ui = std::make_shared<platform::TerminalUi>();
    services.pasteboard = std::make_shared<platform::TranscriptPasteboard>(std::cout);
    return true;
}

platform::Platform desktopServices() {
    platform::Platform services;
    services.workspace = std::make_shared<platform::GioWorkspace>();
    services.applications = std::make_shared<platform::GioApplications>();
    services.standardDefaults = platform::openStandardDefaults();
    return services;
}

} // namespace

void addRunCommand(CLI::App& app, Outcome& outcome) {
    auto* run = app.add_subcommand("run", "Carry out the command of the menu entry with a tag");
    static RequestOptions request;
    static std::int64_t tag = 0;
    static std::string ui = "terminal";
    request.addOptions(*run);
    run->add_option("--tag", tag, "The entry's tag, as `menu` prints it")->required();
    run->add_option("--key", request.keys,
                    "The keys of the entry and its parents, top first (repeat the option); "
                    "nothing runs when the entry at the tag has other keys");
    run->add_option("--ui", ui, "terminal, script:FILE or gui");
    run->callback([&outcome] {
        platform::Platform services = desktopServices();
        const bool inTerminal = useUi(services, ui);
        Request::Options options = request.toRequest(std::move(services));
        options.services.services = std::make_shared<platform::TerminalServices>(
            platform::TerminalServices::preferenceIn(options.store->sharedSuite()));
        options.offersReview = !inTerminal;
        Request forRun(std::move(options));
        switch (runRequest(forRun, tag)) {
        case DispatchResult::Ran:
            return;
        case DispatchResult::TagNotFound:
            std::fprintf(stderr, "pxmenu: no menu entry has the tag %lld for this selection\n",
                         static_cast<long long>(tag));
            outcome.status = kTagNotFound;
            return;
        case DispatchResult::KeyPathChanged:
            std::fprintf(stderr,
                         "pxmenu: the entry with the tag %lld has changed since the menu was "
                         "shown; nothing was done\n",
                         static_cast<long long>(tag));
            outcome.status = kEntryChanged;
            return;
        }
    });
}

} // namespace px::cli
