// Running the selected script files.
#include "actions/Alerts.h"
#include "actions/CommandRunner.h"
#include "actions/FileHash.h"
#include "actions/PXFile.h"
#include "extension/FinderSync.h"
#include "support/Queues.h"

namespace px {

namespace {

// Shell scripts start and are not waited for; script-runner files run one after another, each
// failure answered by its own alert on the main queue; anything else is left alone.
void runScriptFile(const std::string& path) {
    const std::string ext = PXFile(path).ext();
    if (ext == "sh") return filehash::executeShellFile(path);
    if (ext != "scpt") return;
    auto message = filehash::executeAppleScriptPath(path);
    if (!message || !filehash::isValid(*message)) return;
    queue::enterForeground([text = *message] { alert::alertWithMsg(text); });
}

} // namespace

void FinderSync::executeScript() {
    queue::enterBackground([selection = selectURLs()] {
        for (const auto& path : selection)
            runScriptFile(path);
    });
}

} // namespace px
