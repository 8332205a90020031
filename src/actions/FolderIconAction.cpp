// Giving the selected items a custom icon from the folder-icon list, or taking it away: the
// desktop's metadata attribute for every item and, for folders, the ".directory" file's icon.
#include "actions/Commands.h"
#include "actions/CustomIcon.h"
#include "actions/DirectoryFile.h"
#include "actions/FailureLog.h"
#include "actions/FolderIconImage.h"

#include <cerrno>
#include <sys/stat.h>
#include <vector>

namespace px::commands {

namespace {

using Failures = std::vector<Error>;

// A missing metadata store is the desktop's configuration, not a failure of this item.
void note(Failures& failures, ErrorOr<void> done) {
    if (done.isError() && done.error().code != ENOTSUP) failures.push_back(done.releaseError());
}

bool isDirectory(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

bool isPresent(const std::string& path) {
    struct stat info {};
    return ::lstat(path.c_str(), &info) == 0;
}

Failures setIcon(const std::string& path, const std::string& image) {
    if (!isPresent(path)) return {Error{path + " no longer exists", ENOENT}};
    Failures failures;
    note(failures, customicon::setMetadataIcon(path, image));
    if (isDirectory(path)) note(failures, directoryfile::setIcon(path, image));
    return failures;
}

Failures removeIcon(const std::string& path) {
    if (!isPresent(path)) return {Error{path + " no longer exists", ENOENT}};
    Failures failures;
    note(failures, customicon::removeMetadataIcon(path));
    if (isDirectory(path)) note(failures, directoryfile::removeIcon(path));
    return failures;
}

} // namespace

void setFolderIcon(ActionContext& cx, const PXMenuItem& item) {
    std::optional<std::string> image;
    if (item.key != "Recover Icon") image = foldericon::imageFileFor(cx.store(), item);
    for (const auto& path : cx.selection())
        for (const auto& failure : image ? setIcon(path, *image) : removeIcon(path))
            logFailure(failure);
}

} // namespace px::commands
