// pxmenu run: choose a menu entry by its tag and carry out its command.
#include "Commands.h"
#include "HandOff.h"
#include "Request.h"
#include "actions/RunRequest.h"
#include "platform/linux/GioApplications.h"
#include "platform/linux/GioWorkspace.h"
#include "platform/linux/ScriptedUi.h"
#include "platform/linux/TerminalServices.h"
#include "platform/linux/TerminalUi.h"
#include "platform/linux/TranscriptPasteboard.h"
#include "platform/linux/UserStore.h"
#include "support/FileIO.h"

#include <cstdio>
#include <fmt/format.h>
#include <iostream>
#include <unistd.h>

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

// `--ui gui`: the request goes to the session's extension process, which shows the windows.
int handOffToExtension(const RequestOptions& request, std::int64_t tag, bool wait,
                       const std::string& driveScript) {
    handoff::Request frame;
    frame.arguments = {"run",
                       "--tag",
                       std::to_string(tag),
                       "--kind",
                       std::to_string(request.kind),
                       "--target",
                       absolutePath(request.target)};
    for (const auto& key : request.keys) {
        frame.arguments.push_back("--key");
        frame.arguments.push_back(key);
    }
    frame.arguments.push_back("--");
    for (const auto& path : request.paths)
        frame.arguments.push_back(absolutePath(path));
    frame.folder = absolutePath("");
    frame.environment = handoff::carriedEnvironment(environ);
    frame.wait = wait;
    if (!driveScript.empty()) {
        auto text = io::readWholeFile(driveScript);
        if (text.isError()) throw UsageError(text.error().message);
        frame.script = text.releaseValue();
        if (frame.script.empty()) frame.script = "\n";
    }
    auto reply = handoff::handOff(frame, handoff::extensionProgram());
    if (reply.isError()) {
        std::fprintf(stderr, "pxmenu: %s\n", reply.error().message.c_str());
        return kHandOffFailed;
    }
    switch (reply.value().kind) {
    case handoff::Reply::Kind::Accepted:
        return 0;
    case handoff::Reply::Kind::Refused:
        std::fprintf(stderr, "pxmenu: the extension process refused the request: %s\n",
                     reply.value().message.c_str());
        return kHandOffFailed;
    case handoff::Reply::Kind::Finished:
        break;
    }
    std::fwrite(reply.value().transcript.data(), 1, reply.value().transcript.size(), stdout);
    std::fwrite(reply.value().errors.data(), 1, reply.value().errors.size(), stderr);
    return reply.value().status;
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
    static bool wait = false;
    static std::string drive;
    run->add_flag("--wait", wait,
                  "With --ui gui: stay until the work is over, print the transcript and return "
                  "the command's exit status");
    run->add_option("--drive", drive,
                    "With --ui gui: answer the real windows from this prompt script");
    run->callback([&outcome] {
        if (ui == "gui") {
            outcome.status = handOffToExtension(request, tag, wait, drive);
            return;
        }
        if (wait || !drive.empty()) throw UsageError("--wait and --drive go with --ui gui");
        platform::Platform services = desktopServices();
        const bool inTerminal = useUi(services, ui);
        Request::Options options = request.toRequest(std::move(services));
        const auto& suite = options.store->sharedSuite();
        options.services.services = std::make_shared<platform::TerminalServices>(
            platform::TerminalServices::preferenceIn(suite),
            platform::TerminalServices::preferenceIn(suite, "terminal"));
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
