// Running the selected script files.
#include "actions/Alerts.h"
#include "actions/CommandRunner.h"
#include "actions/Commands.h"
#include "support/FileHash.h"
#include "support/PXFile.h"
#include "support/Queues.h"

namespace px::commands {

namespace {

// Shell scripts start and are not waited for; script-runner files run one after another, each
// failure answered by its own alert on the main queue; anything else is left alone.
void runScriptFile(platform::Ui& ui, const std::string& path) {
    const std::string ext = PXFile(path).ext();
    if (ext == "sh") return filehash::executeShellFile(path);
    if (ext != "scpt") return;
    auto message = filehash::executeAppleScriptPath(path);
    if (!message || !filehash::isValid(*message)) return;
    queue::enterForeground([&ui, text = *message] { alert::alertWithMsg(ui, text); });
}

} // namespace

void executeScript(ActionContext& cx) {
    queue::enterBackground([&ui = cx.ui(), selection = cx.selection()] {
        for (const auto& path : selection)
            runScriptFile(ui, path);
    });
}

} // namespace px::commands
