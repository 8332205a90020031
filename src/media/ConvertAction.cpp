// "Convert to": converts the selected images into the chosen format beside them, and leads to
// the app-icon export, the extraction of a PDF's pages and the merge into one PDF.
#include "actions/Alerts.h"
#include "actions/PathName.h"
#include "archive/PXLoadingWinCtl.h"
#include "config/Localization.h"
#include "extension/FinderSync.h"
#include "media/AppIconExport.h"
#include "media/ImageFile.h"
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

void exportIcon(const vips::VImage& image, const std::string& base, std::int64_t tag) {
    const auto status = media::createIconToPath(image, base, static_cast<int>(tag - 1));
    if (status == media::IconExportStatus::NotSquare)
        alertOnMain(localizedFormat("Convert Icns image invalid", image.width(), image.height()));
}

void extractPages(const ConvertJob& job, const std::string& path) {
    FinderSync* sync = job.sync;
    media::extractImageFromPDF(path, job.key, [sync](std::int64_t count, std::int64_t index) {
        if (count == 0) return;
        const float percent = static_cast<float>(index) / static_cast<float>(count);
        queue::enterForeground([sync, percent] { sync->loadingWinCtl().setPercent(percent); });
    });
}

void saveConverted(const vips::VImage& image, const std::string& base, const std::string& key) {
    const std::string destination = base + "." + path::lowercased(key);
    if (!media::saveImageWithExt(image, key, destination)) alertOnMain(localized("Convert Fail"));
}

bool isIconExport(const std::string& key) {
    return key.find("AppIcon") != std::string::npos;
}

// The image is loaded before the branch, as a gate: what cannot be read is skipped without a
// word. A PDF passes it when its document opens (libvips reads the first page's header only),
// so a readable PDF reaches the page extraction and a broken one is skipped like any image.
// Only the icon export reads its source several times; the other branches stream it once.
void convertOne(const ConvertJob& job, const std::string& path) {
    if (!isAccepted(path, job.formats)) return;
    const bool icon = isIconExport(job.key);
    const auto image =
        media::loadImage(path, icon ? media::ImageAccess::Random : media::ImageAccess::Sequential);
    if (!image) return;
    const std::string base = path::deletingPathExtension(path);
    if (icon)
        exportIcon(*image, base, job.tag);
    else if (path::lowercased(path::pathExtension(path)) == "pdf")
        extractPages(job, path);
    else
        saveConverted(*image, base, job.key);
}

void runConvertJob(const ConvertJob& job) {
    if (job.key == "PDF")
        media::mergeToPDF(job.paths);
    else
        for (const std::string& path : job.paths)
            convertOne(job, path);
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
