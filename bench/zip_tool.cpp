// Writes a password-protected zip archive of one folder through SSZipArchive, the way the
// compression job packs a selected folder: every file under the folder's name, empty folders
// as folder entries. Used by zip_vs_7z.sh to time the writer against other archivers.
//
//   zip_tool ARCHIVE FOLDER [PASSWORD [CANCEL_AFTER_SECONDS]]
// With CANCEL_AFTER_SECONDS, the job is cancelled then and the time from the cancel to the end
// of close() (workers stopped, temporary file removed) is printed.
#include "archive/SSZipArchive.h"

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>

namespace fs = std::filesystem;

namespace {

bool addTree(px::SSZipArchive& zip, const fs::path& folder,
             const std::optional<std::string>& password) {
    std::string top = folder.filename().string();
    bool ok = true;
    std::error_code error;
    for (fs::recursive_directory_iterator it(folder, error), end; it != end && !error;
         it.increment(error)) {
        std::string name = top + "/" + fs::relative(it->path(), folder).string();
        if (it->is_directory()) {
            if (fs::is_empty(it->path())) ok &= zip.writeFolderAtPath(it->path(), name, password);
        } else {
            ok &= zip.writeFileAtPath(it->path(), name, password);
        }
        if (!ok && zip.lastError()) std::fprintf(stderr, "%s\n", zip.lastError()->message.c_str());
    }
    return ok && !error;
}

} // namespace

int main(int argc, char** argv) {
    using Clock = std::chrono::steady_clock;
    if (argc < 3) {
        std::fprintf(stderr, "usage: zip_tool ARCHIVE FOLDER [PASSWORD [CANCEL_AFTER_SECONDS]]\n");
        return 2;
    }
    std::optional<std::string> password;
    if (argc > 3) password = argv[3];
    const auto start = Clock::now();
    px::SSZipArchive zip(argv[1]);
    if (!zip.open()) {
        std::fprintf(stderr, "%s\n", zip.lastError()->message.c_str());
        return 1;
    }
    std::size_t items = 0;
    zip.setProgressHandler([&](std::size_t done) { items = done; });
    std::optional<Clock::time_point> cancelledAt;
    if (argc > 4) {
        const auto after = std::chrono::duration<double>(std::stod(argv[4]));
        zip.setCancelPredicate([&cancelledAt, start, after] {
            if (!cancelledAt && Clock::now() - start >= after) cancelledAt = Clock::now();
            return cancelledAt.has_value();
        });
    }
    fs::path folder = fs::absolute(argv[2]).lexically_normal();
    if (folder.filename().empty()) folder = folder.parent_path();
    bool added = addTree(zip, folder, password);
    const bool closed = zip.close();
    const auto end = Clock::now();
    if (cancelledAt) {
        std::printf("cancelled after %zu entries; close() returned %.1f ms after the cancel\n",
                    items, std::chrono::duration<double, std::milli>(end - *cancelledAt).count());
        return closed ? 1 : 0;
    }
    if (!closed) {
        std::fprintf(stderr, "%s\n", zip.lastError()->message.c_str());
        return 1;
    }
    std::printf("%zu entries written in %.2f s\n", items,
                std::chrono::duration<double>(end - start).count());
    return added ? 0 : 1;
}
