// "Copy to" and "Move to": the selection goes to a chosen folder, each item as its own job on
// the background queue, with the progress window open until the last one has ended.
#include "actions/Commands.h"
#include "actions/ItemTransfer.h"
#include "actions/NewFile.h"
#include "actions/ProgressModel.h"
#include "actions/TransferReport.h"
#include "extension/PXCheckPermit.h"
#include "support/FileHash.h"
#include "support/Localization.h"
#include "support/PathName.h"
#include "support/Queues.h"

namespace px::commands {

namespace {

struct Job {
    std::string source;
    std::string target;
    transfer::Existing existing;
    bool isCopy;
};

// The item's folder, or the one the user chooses; nothing when the user cancels.
std::optional<std::string> destinationOf(ActionContext& cx, const PXMenuItem& item, bool isCopy) {
    if (filehash::isValid(item.path)) return item.path;
    auto chosen = cx.request.permits().selectFolderWithPrompt(localized(isCopy ? "Copy" : "Move"));
    if (!chosen || !filehash::isValid(*chosen)) return std::nullopt;
    return chosen;
}

// Main queue: the job's outcome; the last job to end shows the success state, whatever the
// others' outcomes, and cleans up after it.
void finishJob(ActionContext& sync, const Job& job, const ErrorOr<void>& result) {
    if (result.isError())
        transfer::reportFailure(sync.request, result.error(), job.source,
                                path::deletingLastPathComponent(job.target));
    if (--sync.loadingCount > 0) return;
    sync.loadingCount = 0;
    sync.progress().showSuccess(localized("Success Common Tip"), [&sync] { sync.clean(); });
}

void startJob(ActionContext& sync, Job job) {
    ++sync.loadingCount;
    sync.progress().open();
    queue::enterBackground([&sync, job = std::move(job)] {
        ErrorOr<void> result = job.isCopy
                                   ? transfer::copyItem(job.source, job.target, job.existing)
                                   : transfer::moveItem(job.source, job.target, job.existing);
        queue::enterForeground([&sync, job, result] { finishJob(sync, job, result); });
    });
}

} // namespace

void moveOrCopy(ActionContext& cx, const PXMenuItem& item, bool isCopy) {
    const auto destination = destinationOf(cx, item, isCopy);
    if (!destination) return;
    cx.request.permits().checkPermitWithPath(
        *destination,
        [&cx, &destination, isCopy] {
            const std::vector<std::string> sources = cx.selection();
            for (const auto& source : sources) {
                const std::string target =
                    path::appendingPathComponent(*destination, path::lastPathComponent(source));
                newfile::replaceFileAlert(
                    cx.ui(), target,
                    [&](const std::string& finalPath, transfer::Existing existing) {
                        if (existing == transfer::Existing::Replace &&
                            transfer::replacesSource(source, finalPath))
                            return transfer::reportSourceKept(cx.ui(), finalPath);
                        startJob(cx, {source, finalPath, existing, isCopy});
                    });
            }
        },
        {});
}

} // namespace px::commands
