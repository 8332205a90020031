#include "actions/CommandRunner.h"

#include "support/ProcessSpawn.h"
#include "support/Localization.h"

#include <cstdio>
#include <fmt/format.h>
#include <sys/stat.h>

namespace px::filehash {

namespace {

void report(const Error& error) {
    fmt::print(stderr, "pxmenu: {}\n", error.message);
}

// A relative path starting with "-" would be read by the shell as an option.
std::string asOperand(const std::string& path) {
    return path.empty() || path.front() == '/' ? path : "./" + path;
}

} // namespace

void executeShellFile(const std::string& path) {
    auto started = process::spawnDetached({"/bin/sh", asOperand(path)});
    if (started.isError()) report(started.error());
}

std::optional<std::string> executeAppleScriptPath(const std::string& path) {
    struct stat info {};
    if (path.empty() || ::stat(path.c_str(), &info) != 0 || S_ISDIR(info.st_mode))
        return std::nullopt;
    return localized("Script Runner Not Available Tip");
}

} // namespace px::filehash
