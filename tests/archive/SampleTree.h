#pragma once

#include "ArchiveTestSupport.h"
#include "archive/SSZipArchive.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace px::test {

// A folder of files worth archiving: text, random data, an empty file, names in Cyrillic,
// Japanese and with accents, nested folders and one empty folder.
struct SampleTree {
    explicit SampleTree(const std::string& root);

    // (entry name, bytes) of every file, and the name of the empty folder.
    std::vector<std::pair<std::string, std::string>> files;
    std::string emptyFolder = "data/nothing";
    std::string root;

    // Packs every file and the empty folder into `archive`; true when close() succeeded.
    bool pack(const std::string& archive, const std::optional<std::string>& password) const;
    // The entry names an archive of this tree holds, sorted.
    std::vector<std::string> entryNames() const;
    // Checks that `folder` holds exactly the tree's files with the same bytes.
    void expectExtractedTo(const std::string& folder) const;
};

} // namespace px::test
