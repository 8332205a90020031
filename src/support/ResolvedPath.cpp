#include "support/ResolvedPath.h"

#include <cstdlib>
#include <memory>
#include <optional>

namespace px {

namespace {

std::optional<std::string> realPath(const std::string& path) {
    std::unique_ptr<char, decltype(&std::free)> resolved(::realpath(path.c_str(), nullptr),
                                                         &std::free);
    if (!resolved) return std::nullopt;
    return std::string(resolved.get());
}

std::string parentOf(const std::string& path) {
    auto slash = path.find_last_of('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string joined(const std::string& folder, const std::string& name) {
    if (name.empty() || name == ".") return folder;
    if (name == "..") return parentOf(folder);
    return folder.ends_with('/') ? folder + name : folder + "/" + name;
}

} // namespace

std::string resolveSymbolicLinks(const std::string& path) {
    if (path.empty()) return path;
    if (auto resolved = realPath(path)) return *resolved;
    auto slash = path.find_last_of('/');
    if (slash == std::string::npos) return path;
    // Strip repeated slashes before the last name so that "a//b" does not recurse on "a/".
    auto end = path.find_last_not_of('/', slash);
    std::string parent = end == std::string::npos ? "/" : path.substr(0, end + 1);
    return joined(resolveSymbolicLinks(parent), path.substr(slash + 1));
}

} // namespace px
