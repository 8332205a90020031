#include "archive/CompressItems.h"

#include "support/FileHash.h"
#include "support/PathName.h"

#include <filesystem>
#include <sys/stat.h>

namespace px::compress {

namespace {

namespace fs = std::filesystem;

std::string withoutTrailingSlashes(std::string path) {
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

// Adds everything below `folder` (pre-order), named `prefix` + "/" + the relative path.
void listFolder(const std::string& folder, const std::string& prefix, ItemList& list) {
    std::error_code error;
    fs::directory_iterator entries(folder, error);
    if (error) {
        list.unreadableFolders.push_back(folder);
        return;
    }
    for (const fs::directory_iterator end; entries != end; entries.increment(error)) {
        const std::string name = entries->path().filename().string();
        Item item{folder + "/" + name, prefix + "/" + name, true};
        list.items.push_back(item);
        std::error_code typeError;
        if (entries->symlink_status(typeError).type() == fs::file_type::directory)
            listFolder(item.path, item.entryName, list);
    }
    if (error) list.unreadableFolders.push_back(folder);
}

std::string normalised(const std::string& path) {
    std::error_code error;
    fs::path absolute = fs::absolute(path, error);
    if (error) absolute = path;
    return withoutTrailingSlashes(absolute.lexically_normal().string());
}

} // namespace

ItemList listItems(const std::vector<std::string>& paths) {
    ItemList list;
    for (const std::string& selected : paths) {
        const std::string path = withoutTrailingSlashes(selected);
        const std::string name = px::path::lastPathComponent(path);
        if (!filehash::isFolder(path)) {
            list.items.push_back({path, name, false});
            continue;
        }
        listFolder(path, name, list);
    }
    return list;
}

bool isSamePath(const std::string& path, const std::string& other) {
    if (normalised(path) == normalised(other)) return true;
    struct stat first {
    }, second{};
    return ::lstat(path.c_str(), &first) == 0 && ::lstat(other.c_str(), &second) == 0 &&
           first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

} // namespace px::compress
