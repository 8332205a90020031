// "Convert to": converts the selected images into the chosen format beside them, and leads to
// the app-icon export, the extraction of a PDF's pages and the merge into one PDF.
#include "actions/Alerts.h"
#include "actions/FailureLog.h"
#include "actions/PathName.h"
#include "archive/PXLoadingWinCtl.h"
#include "config/Localization.h"
#include "extension/FinderSync.h"
#include "media/BoundedConversion.h"
#include "media/PdfTools.h"
#include "support/Queues.h"

#include <algorithm>

namespace px {
namespace {

// What the background work needs, copied on the main queue so the work never touches the
// extension object's state.
struct ConvertJob {
    FinderSync* sync;
    std::vector<std::string> paths;
    std::vector<std::string> formats;
    std::string key;
    std::int64_t tag;
};

void alertOnMain(std::string message) {
    queue::enterForeground([message = std::move(message)] { alert::alertWithMsg(message); });
}

// The accepted extensions are compared exactly as written: "photo.PNG" is not a "png".
bool isAccepted(const std::string& path, const std::vector<std::string>& formats) {
    return std::find(formats.begin(), formats.end(), path::pathExtension(path)) != formats.end();
}

media::PdfProgress progressOf(FinderSync* sync) {
    return [sync](std::int64_t count, std::int64_t index) {
        if (count == 0) return;
        const float percent = static_cast<float>(index) / static_cast<float>(count);
        queue::enterForeground([sync, percent] { sync->loadingWinCtl().setPercent(percent); });
    };
}

void report(const media::ConvertOutcome& outcome) {
    using Result = media::ConvertOutcome::Result;
    if (outcome.result == Result::NotSquare)
        alertOnMain(localizedFormat("Convert Icns image invalid", outcome.width, outcome.height));
    else if (outcome.result == Result::Failed)
        alertOnMain(localized("Convert Fail"));
}

// Each file is converted by a worker process of its own, bounded in memory and time.
void convertAll(const ConvertJob& job) {
    const int iconType = static_cast<int>(job.tag - 1);
    for (const std::string& path : job.paths)
        if (isAccepted(path, job.formats))
            report(media::convertBounded(path, job.key, iconType, progressOf(job.sync)));
}

void runConvertJob(const ConvertJob& job) {
    if (job.key == "PDF")
        media::mergeToPDF(job.paths);
    else
        convertAll(job);
    FinderSync* sync = job.sync;
    queue::enterForegroundWithDelay(0, [sync] { sync->endLoading(); });
}

} // namespace

void FinderSync::convertItem(const PXMenuItem::Ptr& item, const PXMenuItem::Ptr& parentItem) {
    if (!item || !parentItem) return;
    ConvertJob job{this, selectURLs(), parentItem->formats, item->key, item->tag};
    beginLoading();
    queue::enterBackground([job = std::move(job)] { runConvertJob(job); });
}

} // namespace px
