// "Convert to": converts the selected images into the chosen format beside them, and leads to
// the app-icon export, the extraction of a PDF's pages and the merge into one PDF.
#include "actions/Alerts.h"
#include "actions/Commands.h"
#include "actions/FailureLog.h"
#include "actions/ProgressModel.h"
#include "media/BoundedConversion.h"
#include "media/PdfTools.h"
#include "support/Localization.h"
#include "support/PathName.h"
#include "support/Queues.h"

#include <algorithm>

namespace px::commands {
namespace {

// What the background work needs, copied on the main queue so the work never touches the
// extension object's state.
struct ConvertJob {
    ActionContext* sync;
    std::vector<std::string> paths;
    std::vector<std::string> formats;
    std::string key;
    std::int64_t tag;
};

void alertOnMain(platform::Ui& ui, std::string message) {
    queue::enterForeground(
        [&ui, message = std::move(message)] { alert::alertWithMsg(ui, message); });
}

// The accepted extensions are compared exactly as written: "photo.PNG" is not a "png".
bool isAccepted(const std::string& path, const std::vector<std::string>& formats) {
    return std::find(formats.begin(), formats.end(), path::pathExtension(path)) != formats.end();
}

media::PdfProgress progressOf(ActionContext* sync) {
    return [sync](std::int64_t count, std::int64_t index) {
        if (count == 0) return;
        const float percent = static_cast<float>(index) / static_cast<float>(count);
        queue::enterForeground([sync, percent] { sync->progress().setPercent(percent); });
    };
}

void report(platform::Ui& ui, const media::ConvertOutcome& outcome) {
    using Result = media::ConvertOutcome::Result;
    if (outcome.result == Result::NotSquare)
        alertOnMain(ui,
                    localizedFormat("Convert Icns image invalid", outcome.width, outcome.height));
    else if (outcome.result == Result::Failed)
        alertOnMain(ui, localized("Convert Fail"));
}

// Each file is converted by a worker process of its own, bounded in memory and time.
void convertAll(const ConvertJob& job) {
    const int iconType = static_cast<int>(job.tag - 1);
    for (const std::string& path : job.paths)
        if (isAccepted(path, job.formats))
            report(job.sync->ui(),
                   media::convertBounded(path, job.key, iconType, progressOf(job.sync)));
}

void runConvertJob(const ConvertJob& job) {
    if (job.key == "PDF")
        media::mergeToPDF(job.paths);
    else
        convertAll(job);
    ActionContext* sync = job.sync;
    queue::enterForegroundWithDelay(0, [sync] { sync->endLoading(); });
}

} // namespace

void convert(ActionContext& cx, const PXMenuItem& target, std::size_t index,
             const PXMenuItem& parent) {
    ConvertJob job{&cx, cx.selection(), parent.formats, target.key,
                   static_cast<std::int64_t>(index)};
    cx.beginLoading();
    queue::enterBackground([job = std::move(job)] { runConvertJob(job); });
}

} // namespace px::commands
