// "Encrypted Compression": packs the selection into a zip archive, with the progress window.
#include "actions/Alerts.h"
#include "actions/Commands.h"
#include "actions/ProgressModel.h"
#include "archive/PXCompress.h"
#include "support/Localization.h"

namespace px::commands {

namespace {

// Main queue. Reports of a job that is no longer the running one (already cleaned up) only
// still show a failure.
void onCompressReport(ActionContext& sync, const std::weak_ptr<PXCompress>& job, std::int64_t done,
                      std::int64_t total) {
    const bool running = sync.compress && sync.compress == job.lock();
    if (total == 0 && done == 0) {
        if (running) sync.progress().open();
    } else if (total > 0) {
        if (!running) return;
        sync.progress().setPercent(static_cast<double>(done) / static_cast<double>(total));
        if (done == total) sync.clean();
    } else {
        if (running) sync.clean();
        if (total == PXCompress::kFailed)
            alert::alertWithMsg(sync.ui(), localized("Compression Failed"));
    }
}

} // namespace

void compress(ActionContext& cx) {
    if (cx.compress) return;
    auto job = std::make_shared<PXCompress>();
    cx.compress = job;
    cx.progress().cancelHandler = [&cx] {
        if (cx.compress) cx.compress->stopCompress();
    };
    std::weak_ptr<PXCompress> weakJob = job;
    job->compressPaths(cx.ui(), cx.selection(),
                       [&cx, weakJob](std::int64_t done, std::int64_t total) {
                           onCompressReport(cx, weakJob, done, total);
                       });
}

} // namespace px::commands
