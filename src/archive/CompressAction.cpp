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
void onCompressReport(ActionContext& cx, const std::weak_ptr<PXCompress>& job,
                      const CompressReport& report) {
    using Kind = CompressReport::Kind;
    const bool running = cx.compress && cx.compress == job.lock();
    switch (report.kind) {
    case Kind::Started:
        if (running) cx.progress().open();
        return;
    case Kind::Progress:
        if (!running || report.total <= 0) return;
        cx.progress().setPercent(static_cast<double>(report.done) /
                                 static_cast<double>(report.total));
        if (report.isComplete()) cx.clean();
        return;
    case Kind::Failed:
    case Kind::Cancelled:
        if (running) cx.clean();
        if (report.kind == Kind::Failed)
            alert::alertWithMsg(cx.ui(), localized("Compression Failed"));
        return;
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
    job->compressPaths(cx.ui(), cx.selection(), [&cx, weakJob](const CompressReport& report) {
        onCompressReport(cx, weakJob, report);
    });
}

} // namespace px::commands
