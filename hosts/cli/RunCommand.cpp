// pxmenu run: choose a menu entry by its tag and carry out its command.
#include "Commands.h"
#include "Request.h"
#include "extension/FinderSync.h"
#include "platform/Platform.h"
#include "platform/linux/GioApplications.h"
#include "platform/linux/GioWorkspace.h"
#include "platform/linux/ScriptedUi.h"
#include "platform/linux/TerminalServices.h"
#include "platform/linux/TerminalUi.h"
#include "platform/linux/TranscriptPasteboard.h"
#include "support/Queues.h"

#include <cstdio>
#include <fmt/format.h>
#include <iostream>

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
    if (mode == "gui")
        throw UsageError(
            "--ui gui needs the graphical extension process, which this build does not include; "
            "use --ui terminal or --ui script:FILE");
    if (mode != "terminal") throw UsageError(fmt::format("unknown --ui mode '{}'", mode));
    platform::current().ui = std::make_shared<platform::TerminalUi>();
    platform::current().pasteboard = std::make_shared<platform::TranscriptPasteboard>(std::cout);
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
    run->callback([&outcome] {
        installUi(ui);
        platform::current().workspace = std::make_shared<platform::GioWorkspace>();
        platform::current().applications = std::make_shared<platform::GioApplications>();
        platform::current().services = std::make_shared<platform::TerminalServices>();
        request.installController();
        queue::markMainThread();
        // A person at the terminal is never asked for a review; scripted runs answer it.
        FinderSync sync({.showReviewPrompt = ui != "terminal"});
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
