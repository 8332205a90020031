// Writes a password-protected zip archive of one folder through SSZipArchive, the way the
// compression job packs a selected folder: every file under the folder's name, empty folders
// as folder entries. Used by zip_vs_7z.sh to time the writer against other archivers.
//
//   zip_tool ARCHIVE FOLDER [PASSWORD]
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
    if (argc < 3) {
        std::fprintf(stderr, "usage: zip_tool ARCHIVE FOLDER [PASSWORD]\n");
        return 2;
    }
    std::optional<std::string> password;
    if (argc > 3) password = argv[3];
    auto start = std::chrono::steady_clock::now();
    px::SSZipArchive zip(argv[1]);
    if (!zip.open()) {
        std::fprintf(stderr, "%s\n", zip.lastError()->message.c_str());
        return 1;
    }
    std::size_t items = 0;
    zip.setProgressHandler([&](std::size_t done) { items = done; });
    fs::path folder = fs::absolute(argv[2]).lexically_normal();
    if (folder.filename().empty()) folder = folder.parent_path();
    bool added = addTree(zip, folder, password);
    if (!zip.close()) {
        std::fprintf(stderr, "%s\n", zip.lastError()->message.c_str());
        return 1;
    }
    double seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    std::printf("%zu entries written in %.2f s\n", items, seconds);
    return added ? 0 : 1;
}
