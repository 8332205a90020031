#pragma once

#include "Commands.h"
#include "extension/MenuEntry.h"

#include <string>
#include <vector>

namespace px::cli {

// The request options that `menu` and `run` share: the selection, the folder being shown and
// the menu kind.
struct Request {
    std::vector<std::string> paths;
    std::string target;
    int kind = 0;
    // A file of NUL-terminated paths added to the selection, then removed: a plugin hands over a
    // selection too large for an argument vector this way.
    std::string pathsFrom;

    void addOptions(CLI::App& command);
    // The selection: the paths given, then those of the --paths-from file.
    std::vector<std::string> selection() const;
    // Installs the controller for the request: absolute selection, target defaulting to the
    // current folder.
    void installController() const;
};

std::string absolutePath(const std::string& path);

} // namespace px::cli
