#pragma once

#include <string>
#include <vector>

// What a compression job packs, listed before anything is written so that every item counts
// towards an exact percentage.
namespace px::compress {

struct Item {
    std::string path;          // where the item is
    std::string entryName;     // its name in the archive
    bool insideFolder = false; // found inside a selected folder (not selected itself)
};

struct ItemList {
    std::vector<Item> items;
    // Folders whose contents could not be listed completely.
    std::vector<std::string> unreadableFolders;
};

// The selected paths in order, each followed by everything inside it when it is a folder (a
// symbolic link to a folder is listed as itself): all levels, hidden entries included, each
// folder before its contents, in the file system's order. Folders inside are entered but not
// followed through symbolic links. A selected folder F contributes entries "F/<sub-path>" and
// none of its own.
ItemList listItems(const std::vector<std::string>& paths);

// Whether two paths name the same place: equal once made absolute and normalised, or the same
// existing file.
bool isSamePath(const std::string& path, const std::string& other);

} // namespace px::compress
