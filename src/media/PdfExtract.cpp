#include "media/PageQueue.h"
#include "media/PdfPageRender.h"
#include "media/PdfTools.h"
#include "support/FileHash.h"
#include "support/PathName.h"

#include <algorithm>
#include <exception>
#include <fmt/format.h>
#include <thread>
#include <vector>

namespace px::media {
namespace {

// Pages are rendered at 150 dpi, whatever their size (within PdfPageRender's pixel budget).
constexpr double kExtractDpi = 150.0;
// Rendering is CPU-bound; beyond this, threads only cost memory.
constexpr unsigned kMaxRenderThreads = 8;

struct Extraction {
    std::string pdfPath;
    std::string folder;
    std::string key;

    std::string pagePath(int index) const {
        return path::appendingPathComponent(folder,
                                            fmt::format("{}.{}", index + 1, path::lowercased(key)));
    }
};

// One worker: takes pages until none are left. A worker whose document could not be opened
// (the file went away meanwhile) still takes its share and counts it finished, unwritten.
void renderPages(const Extraction& job, PageQueue& queue, std::unique_ptr<PdfPageRender> document) {
    if (!document) document = PdfPageRender::open(job.pdfPath);
    while (std::optional<int> index = queue.take()) {
        try {
            if (document) document->savePage(*index, kExtractDpi, job.key, job.pagePath(*index));
        } catch (const std::exception&) {
            // A page that cannot be written is skipped, as a failed save is.
        }
        queue.finish();
    }
}

unsigned threadCount(int pages) {
    const unsigned cores = std::max(1u, std::thread::hardware_concurrency());
    return std::min({cores, kMaxRenderThreads, static_cast<unsigned>(pages)});
}

// Reports (count, n) for n = 1 ... count, in order, on the calling thread, as pages finish.
void reportUntilDone(PageQueue& queue, const PdfProgress& progress) {
    for (int reported = 0; reported < queue.count();) {
        const int finished = queue.waitForMoreThan(reported);
        for (; reported < finished; ++reported)
            if (progress) progress(queue.count(), reported + 1);
    }
}

// The pages go into the folder named after the document. A unique folder is made as well:
// when that name is already taken, the new folder stays empty and the existing one receives
// the pages (replacing files of the same names).
std::string prepareFolder(const std::string& pdfPath) {
    const std::string folder = path::deletingPathExtension(pdfPath);
    filehash::createDir(filehash::uniquePath(folder));
    return folder;
}

} // namespace

void extractImageFromPDF(const std::string& pdfPath, const std::string& key,
                         const PdfProgress& progress) {
    std::unique_ptr<PdfPageRender> first = PdfPageRender::open(pdfPath);
    if (!first || first->pageCount() <= 0) {
        if (progress) progress(0, 0);
        return;
    }
    const Extraction job{pdfPath, prepareFolder(pdfPath), key};
    PageQueue queue(first->pageCount());
    std::vector<std::jthread> workers;
    workers.emplace_back(renderPages, std::cref(job), std::ref(queue), std::move(first));
    for (unsigned i = 1; i < threadCount(queue.count()); ++i)
        workers.emplace_back(renderPages, std::cref(job), std::ref(queue), nullptr);
    reportUntilDone(queue, progress);
}

} // namespace px::media
