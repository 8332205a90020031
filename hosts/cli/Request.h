#pragma once

#include "Commands.h"
#include "extension/Request.h"

#include <string>
#include <vector>

namespace px::cli {

// The request options that `menu` and `run` share: the selection, the folder being shown, the
// menu kind and, for `run`, the chosen entry's key path.
struct RequestOptions {
    std::vector<std::string> paths;
    std::string target;
    int kind = 0;
    std::vector<std::string> keys;
    // A file of NUL-terminated paths added to the selection, then removed: a plugin hands over a
    // selection too large for an argument vector this way.
    std::string pathsFrom;

    void addOptions(CLI::App& command);
    // The selection: the paths given, then those of the --paths-from file, absolute.
    std::vector<std::string> selection() const;
    // The request on the user's store with these services: the selection above, target
    // defaulting to the current folder.
    Request::Options toRequest(platform::Platform services) const;
};

std::string absolutePath(const std::string& path);

} // namespace px::cli
