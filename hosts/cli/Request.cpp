#include "Request.h"

#include "platform/Platform.h"
#include "support/StandardPath.h"

#include <unistd.h>

namespace px::cli {

std::string absolutePath(const std::string& path) {
    if (!path.empty() && path.front() == '/') return standardizePath(path);
    char* cwd = ::getcwd(nullptr, 0);
    std::string base = cwd ? cwd : "/";
    std::free(cwd);
    return standardizePath(path.empty() ? base : base + "/" + path);
}

void Request::addOptions(CLI::App& command) {
    command
        .add_option("--kind", kind,
                    "Menu kind: 0 selected items, 1 folder background, 2 sidebar, 3 toolbar")
        ->check(CLI::Range(0, 3));
    command.add_option("--target", target, "The folder being shown (default: the current folder)");
    command.add_option("PATH", paths, "The selected items");
}

void Request::installController() const {
    std::vector<std::string> selection;
    for (const auto& path : paths)
        selection.push_back(absolutePath(path));
    auto& platform = platform::current();
    platform.controller = std::make_shared<platform::StaticFinderSyncController>(
        std::move(selection), absolutePath(target));
}

} // namespace px::cli
