#include "media/PageQueue.h"
#include "media/PdfPageRender.h"
#include "media/PdfTools.h"
#include "support/FileHash.h"
#include "support/PathName.h"
#include "support/TemporaryFiles.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fmt/format.h>
#include <sys/stat.h>
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
    std::string folder; // where the pages are rendered: a temporary beside the document
    std::string key;

    std::string pageName(int index) const {
        return fmt::format("{}.{}", index + 1, path::lowercased(key));
    }
    std::string pagePath(int index) const {
        return path::appendingPathComponent(folder, pageName(index));
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

// The rendered pages move from the temporary folder into the document's folder.
void publishPages(const Extraction& job, int pages) {
    const std::string folder = prepareFolder(job.pdfPath);
    for (int index = 0; index < pages; ++index)
        ::rename(job.pagePath(index).c_str(),
                 path::appendingPathComponent(folder, job.pageName(index)).c_str());
    std::error_code ignored;
    std::filesystem::remove_all(job.folder, ignored);
}

} // namespace

bool extractImageFromPDF(const std::string& pdfPath, const std::string& key,
                         const PdfProgress& progress) {
    std::unique_ptr<PdfPageRender> first = PdfPageRender::open(pdfPath);
    const int pages = first ? first->pageCount() : 0;
    const std::string temporary = io::temporaryBeside(pdfPath);
    if (pages <= 0 || pages > kMaxExtractedPages || ::mkdir(temporary.c_str(), 0755) != 0) {
        if (progress) progress(0, 0);
        return false;
    }
    const Extraction job{pdfPath, temporary, key};
    {
        PageQueue queue(pages);
        std::vector<std::jthread> workers;
        workers.emplace_back(renderPages, std::cref(job), std::ref(queue), std::move(first));
        for (unsigned i = 1; i < threadCount(queue.count()); ++i)
            workers.emplace_back(renderPages, std::cref(job), std::ref(queue), nullptr);
        reportUntilDone(queue, progress);
    }
    publishPages(job, pages);
    return true;
}

} // namespace px::media
