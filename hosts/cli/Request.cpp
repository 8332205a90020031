#include "Request.h"

#include "Store.h"
#include "support/FileIO.h"
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
    command.add_option("--paths-from", pathsFrom,
                       "Add the NUL-separated paths in FILE to the selection, then remove FILE");
    command.add_option("PATH", paths, "The selected items");
}

std::vector<std::string> RequestOptions::selection() const {
    std::vector<std::string> result;
    for (const auto& path : paths)
        result.push_back(absolutePath(path));
    if (pathsFrom.empty()) return result;
    auto contents = io::readWholeFile(pathsFrom);
    if (contents.isError()) throw UsageError(contents.error().message);
    ::unlink(pathsFrom.c_str());
    const std::string& text = contents.value();
    for (std::size_t start = 0, end; start < text.size(); start = end + 1) {
        end = text.find('\0', start);
        if (end == std::string::npos) end = text.size();
        if (end > start) result.push_back(absolutePath(text.substr(start, end - start)));
    }
    return result;
}

Request::Options RequestOptions::toRequest(platform::Platform services) const {
    Request::Options options;
    options.selection = selection();
    options.target = absolutePath(target);
    options.kind = static_cast<MenuKind>(kind);
    options.keyPath = keys;
    options.services = std::move(services);
    options.store = userStore();
    return options;
}

} // namespace px::cli
