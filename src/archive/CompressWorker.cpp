// The compression job's worker on the background queue. The archive writer only records the
// entries; the data is read and written when the archive is closed, and each entry written there
// moves the progress on by one step. A folder with contents has no entry of its own, so the steps
// are the entries (and the archive itself when it was selected, done at once).
#include "archive/CompressItems.h"
#include "archive/PXCompress.h"

#include <filesystem>
#include <iostream>
#include <unistd.h>

namespace px {

namespace {

enum class Added { Entry, NoEntry, Failed };

void report(const std::optional<Error>& error) {
    if (error) std::cerr << "pxmenu: " << error->message << '\n';
}

bool isEmptyFolder(const std::string& path) {
    std::error_code error;
    return std::filesystem::directory_iterator(path, error) ==
           std::filesystem::directory_iterator();
}

// A folder found inside a selected folder gets an entry only when it is empty (its contents
// carry it otherwise); this test follows symbolic links.
Added addItem(SSZipArchive& zip, const compress::Item& item,
              const std::optional<std::string>& password) {
    bool written = true;
    std::error_code error;
    if (!item.insideFolder || !std::filesystem::is_directory(item.path, error))
        written = zip.writeFileAtPath(item.path, item.entryName, password);
    else if (isEmptyFolder(item.path))
        written = zip.writeFolderAtPath(item.path, item.entryName, password);
    else
        return Added::NoEntry;
    if (!written) report(zip.lastError());
    return written ? Added::Entry : Added::Failed;
}

} // namespace

// Steps of the job: one per entry, and one for the archive itself when it was selected.
struct PXCompress::Progress {
    std::int64_t total = 0;
    std::int64_t skipped = 0;
    std::int64_t done = 0;
};

void PXCompress::startCompressWithPaths(const std::vector<std::string>& paths,
                                        const std::optional<std::string>& withPassword,
                                        const ProgressHandler& handler) {
    using Kind = CompressReport::Kind;
    handler({Kind::Started});
    Progress progress;
    const bool closed = writeArchive(paths, withPassword, progress, handler);
    zipArchive.reset();
    if (closed && !isCancel) {
        if (progress.total > 0) handler({Kind::Progress, progress.total, progress.total});
        return;
    }
    if (closed) ::unlink(savePath.c_str()); // complete, but the user cancelled meanwhile
    handler({isCancel ? Kind::Cancelled : Kind::Failed, progress.done, progress.total});
}

// True when the archive is complete at savePath. Nothing is left there otherwise.
bool PXCompress::writeArchive(const std::vector<std::string>& paths,
                              const std::optional<std::string>& password, Progress& progress,
                              const ProgressHandler& handler) {
    zipArchive = std::make_unique<SSZipArchive>(savePath);
    if (!zipArchive->open()) {
        report(zipArchive->lastError());
        return false;
    }
    const compress::ItemList list = compress::listItems(paths);
    for (const auto& folder : list.unreadableFolders)
        std::cerr << "pxmenu: cannot list everything in " << folder << '\n';
    const bool ok = addItems(list.items, password, progress) && list.unreadableFolders.empty();
    return ok && !isCancel && closeArchive(progress, handler);
}

bool PXCompress::addItems(const std::vector<compress::Item>& items,
                          const std::optional<std::string>& password, Progress& progress) {
    bool ok = true;
    for (const compress::Item& item : items) {
        if (isCancel) break;
        if (compress::isSamePath(item.path, savePath)) {
            ++progress.skipped;
            continue;
        }
        Added added = addItem(*zipArchive, item, password);
        if (added == Added::Entry) ++progress.total;
        ok = ok && added != Added::Failed;
    }
    progress.total += progress.skipped;
    progress.done = progress.skipped;
    return ok;
}

// The last report waits until the archive is complete.
bool PXCompress::closeArchive(Progress& progress, const ProgressHandler& handler) {
    zipArchive->setProgressHandler([&progress, &handler](std::size_t entries) {
        progress.done = progress.skipped + static_cast<std::int64_t>(entries);
        if (progress.done < progress.total)
            handler({CompressReport::Kind::Progress, progress.done, progress.total});
    });
    zipArchive->setCancelPredicate([this] { return isCancel.load(); });
    bool closed = zipArchive->close();
    if (!closed && !isCancel) report(zipArchive->lastError());
    return closed;
}

} // namespace px
