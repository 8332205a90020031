// "Encrypted Compression": packs the selection into a zip archive, with the progress window.
#include "actions/Alerts.h"
#include "archive/PXCompress.h"
#include "archive/PXLoadingWinCtl.h"
#include "config/Localization.h"
#include "extension/FinderSync.h"

namespace px {

namespace {

// Main queue. Reports of a job that is no longer the running one (already cleaned up) only
// still show a failure.
void onCompressReport(FinderSync& sync, const std::weak_ptr<PXCompress>& job, std::int64_t done,
                      std::int64_t total) {
    const bool running = sync.compress && sync.compress == job.lock();
    if (total == 0 && done == 0) {
        if (running) sync.loadingWinCtl().open();
    } else if (total > 0) {
        if (!running) return;
        sync.loadingWinCtl().setPercent(static_cast<double>(done) / static_cast<double>(total));
        if (done == total) sync.clean();
    } else {
        if (running) sync.clean();
        if (total == PXCompress::kFailed) alert::alertWithMsg(localized("Compression Failed"));
    }
}

} // namespace

void FinderSync::encryptedCompress(const PXMenuItem::Ptr&) {
    if (compress) return;
    auto job = std::make_shared<PXCompress>();
    compress = job;
    loadingWinCtl().cancelHandler = [this] {
        if (compress) compress->stopCompress();
    };
    std::weak_ptr<PXCompress> weakJob = job;
    job->compressPaths(selectPaths(), [this, weakJob](std::int64_t done, std::int64_t total) {
        onCompressReport(*this, weakJob, done, total);
    });
}

} // namespace px
