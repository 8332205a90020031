// Gathering the selected items into a new folder beside the first one.
#include "actions/EmbedFolder.h"

#include "actions/EmbedFolderPrompt.h"
#include "actions/FreeNameMove.h"
#include "support/FileHash.h"
#include "support/PXFile.h"
#include "support/PathName.h"

#include <cerrno>
#include <sys/stat.h>

namespace px::embed {

namespace {

constexpr int kAttempts = 64;

// Makes a new folder at the first free name from `path` on; never reuses an existing one.
ErrorOr<std::string> makeFreshFolder(const std::string& path) {
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        std::string candidate = filehash::uniquePath(path);
        if (::mkdir(candidate.c_str(), 0777) == 0) return candidate;
        if (errno != EEXIST)
            return Error::fromErrno("cannot create the folder " + candidate, errno);
    }
    return Error::fromErrno("cannot create a folder beside " + path, EEXIST);
}

// Where an item goes inside the new folder: its extension's subfolder (made when nothing is
// there yet) when sorting by extension, else the folder itself.
std::string destinationFolder(const std::string& folder, const PXFile& item, bool byExtension) {
    const std::string ext = item.ext();
    if (!byExtension || !filehash::isValid(ext)) return folder;
    std::string subfolder = path::appendingPathComponent(folder, ext);
    ::mkdir(subfolder.c_str(), 0777); // an existing item there makes the move fail, reported
    return subfolder;
}

} // namespace

EmbedOutcome embedItems(const std::vector<std::string>& paths, const std::string& name,
                        bool byExtension) {
    EmbedOutcome outcome;
    if (paths.empty() || !EmbedFolderPrompt::isUsableName(name)) return outcome;
    const PXFile first(paths.front());
    auto folder = makeFreshFolder(path::appendingPathComponent(first.folder(), name));
    if (folder.isError()) {
        outcome.folderError = folder.releaseError();
        return outcome;
    }
    outcome.folder = folder.value();
    for (const std::string& itemPath : paths) {
        const PXFile item(itemPath);
        std::string target = path::appendingPathComponent(
            destinationFolder(*outcome.folder, item, byExtension), item.filename());
        auto moved = moveToFreeName(itemPath, target);
        if (moved.isError()) outcome.failures.push_back(moved.releaseError());
    }
    return outcome;
}

} // namespace px::embed
