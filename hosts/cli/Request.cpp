#include "Request.h"

#include "Store.h"
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

void RequestOptions::addOptions(CLI::App& command) {
    command
        .add_option("--kind", kind,
                    "Menu kind: 0 selected items, 1 folder background, 2 sidebar, 3 toolbar")
        ->check(CLI::Range(0, 3));
    command.add_option("--target", target, "The folder being shown (default: the current folder)");
    command.add_option("PATH", paths, "The selected items");
}

Request::Options RequestOptions::toRequest(platform::Platform services) const {
    Request::Options options;
    for (const auto& path : paths)
        options.selection.push_back(absolutePath(path));
    options.target = absolutePath(target);
    options.kind = static_cast<MenuKind>(kind);
    options.keyPath = keys;
    options.services = std::move(services);
    options.store = userStore();
    return options;
}

} // namespace px::cli
