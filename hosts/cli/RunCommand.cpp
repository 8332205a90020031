// pxmenu run: choose a menu entry by its tag and carry out its command.
#include "Commands.h"
#include "HandOff.h"
#include "Request.h"
#include "extension/FinderSync.h"
#include "platform/Platform.h"
#include "platform/linux/GioApplications.h"
#include "platform/linux/GioWorkspace.h"
#include "platform/linux/ScriptedUi.h"
#include "platform/linux/TerminalServices.h"
#include "platform/linux/TerminalUi.h"
#include "platform/linux/TranscriptPasteboard.h"
#include "support/FileIO.h"
#include "support/Queues.h"

#include <cstdio>
#include <fmt/format.h>
#include <iostream>
#include <unistd.h>

namespace px::cli {

namespace {

void installScriptedUi(const std::string& file) {
    auto answers = platform::loadScript(file);
    if (answers.isError()) throw UsageError(answers.error().message);
    auto transcript = std::make_shared<platform::Transcript>();
    auto& current = platform::current();
    current.ui = std::make_shared<platform::ScriptedUi>(answers.releaseValue(), transcript);
    current.pasteboard = std::make_shared<platform::TranscriptPasteboard>(transcript);
}

void installUi(const std::string& mode) {
    if (mode.rfind("script:", 0) == 0) return installScriptedUi(mode.substr(7));
    if (mode != "terminal") throw UsageError(fmt::format("unknown --ui mode '{}'", mode));
    platform::current().ui = std::make_shared<platform::TerminalUi>();
    platform::current().pasteboard = std::make_shared<platform::TranscriptPasteboard>(std::cout);
}

// `--ui gui`: the request goes to the session's extension process, which shows the windows.
int handOffToExtension(const Request& request, std::int64_t tag, bool wait,
                       const std::string& driveScript) {
    handoff::Request frame;
    frame.arguments = {"run",
                       "--tag",
                       std::to_string(tag),
                       "--kind",
                       std::to_string(request.kind),
                       "--target",
                       absolutePath(request.target),
                       "--"};
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
    static Request request;
    static std::int64_t tag = 0;
    static std::string ui = "terminal";
    request.addOptions(*run);
    run->add_option("--tag", tag, "The entry's tag, as `menu` prints it")->required();
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
        installUi(ui);
        platform::current().workspace = std::make_shared<platform::GioWorkspace>();
        platform::current().applications = std::make_shared<platform::GioApplications>();
        platform::current().services = std::make_shared<platform::TerminalServices>();
        request.installController();
        queue::markMainThread();
        FinderSync sync;
        Menu menu = sync.menuForMenuKind(static_cast<MenuKind>(request.kind));
        if (!findEntryWithTag(menu, tag)) {
            std::fprintf(stderr, "pxmenu: no menu entry has the tag %lld for this selection\n",
                         static_cast<long long>(tag));
            outcome.status = kTagNotFound;
            return;
        }
        sync.onMenuItemAction(tag);
        queue::runUntilIdle();
    });
}

} // namespace px::cli
