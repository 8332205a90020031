// "Copy to" and "Move to": the selection goes to a chosen folder, each item as its own job on
// the background queue, with the progress window open until the last one has ended.
#include "actions/FileHash.h"
#include "actions/ItemTransfer.h"
#include "actions/NewFile.h"
#include "actions/PathName.h"
#include "actions/TransferReport.h"
#include "archive/PXLoadingWinCtl.h"
#include "config/Localization.h"
#include "extension/FinderSync.h"
#include "support/PXCheckPermit.h"
#include "support/Queues.h"

namespace px {

namespace {

struct Job {
    std::string source;
    std::string target;
    transfer::Existing existing;
    bool isCopy;
};

// The item's folder, or the one the user chooses; nothing when the user cancels.
std::optional<std::string> destinationOf(const PXMenuItem::Ptr& item, bool isCopy) {
    if (item && filehash::isValid(item->path)) return item->path;
    auto chosen = PXCheckPermit::selectFolderWithPrompt(localized(isCopy ? "Copy" : "Move"));
    if (!chosen || !filehash::isValid(*chosen)) return std::nullopt;
    return chosen;
}

// Main queue: the job's outcome; the last job to end shows the success state, whatever the
// others' outcomes, and cleans up after it.
void finishJob(FinderSync& sync, const Job& job, const ErrorOr<void>& result) {
    if (result.isError())
        transfer::reportFailure(result.error(), job.source,
                                path::deletingLastPathComponent(job.target));
    if (--sync.loadingCount > 0) return;
    sync.loadingCount = 0;
    sync.loadingWinCtl().showSuccess(localized("Success Common Tip"), [&sync] { sync.clean(); });
}

void startJob(FinderSync& sync, Job job) {
    ++sync.loadingCount;
    sync.loadingWinCtl().open();
    queue::enterBackground([&sync, job = std::move(job)] {
        ErrorOr<void> result = job.isCopy
                                   ? transfer::copyItem(job.source, job.target, job.existing)
                                   : transfer::moveItem(job.source, job.target, job.existing);
        queue::enterForeground([&sync, job, result] { finishJob(sync, job, result); });
    });
}

} // namespace

void FinderSync::moveAndCopyItem(const PXMenuItem::Ptr& item, bool isCopy) {
    const auto destination = destinationOf(item, isCopy);
    if (!destination) return;
    PXCheckPermit::checkPermitWithPath(
        *destination,
        [this, &destination, isCopy] {
            const std::vector<std::string> sources = selectURLs();
            for (const auto& source : sources) {
                const std::string target =
                    path::appendingPathComponent(*destination, path::lastPathComponent(source));
                newfile::_replaceFileAlert(
                    target, [&](const std::string& finalPath, transfer::Existing existing) {
                        if (existing == transfer::Existing::Replace &&
                            transfer::replacesSource(source, finalPath))
                            return transfer::reportSourceKept(finalPath);
                        startJob(*this, {source, finalPath, existing, isCopy});
                    });
            }
        },
        {});
}

} // namespace px
