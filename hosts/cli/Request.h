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

    void addOptions(CLI::App& command);
    // The request on the user's store with these services: absolute selection, target
    // defaulting to the current folder.
    Request::Options toRequest(platform::Platform services) const;
};

std::string absolutePath(const std::string& path);

} // namespace px::cli
