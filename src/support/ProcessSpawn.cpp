#include "support/ProcessSpawn.h"

#include "support/GlibOwners.h"

#include <cerrno>
#include <glib.h>
#include <memory>
#include <sys/wait.h>
#include <unistd.h>

namespace px::process {

namespace {

using OwnedError = glib::Error;

// The NULL-terminated array GLib wants; it points into `argv`, which must outlive it.
std::vector<char*> cArguments(const std::vector<std::string>& argv) {
    std::vector<char*> result;
    result.reserve(argv.size() + 1);
    for (const auto& argument : argv)
        result.push_back(const_cast<char*>(argument.c_str()));
    result.push_back(nullptr);
    return result;
}

void newSession(gpointer) {
    ::setsid();
}

Error spawnError(const std::vector<std::string>& argv, GError* raw) {
    OwnedError error(raw);
    std::string program = argv.empty() ? std::string("(nothing)") : argv.front();
    std::string reason = error ? error->message : "unknown failure";
    return Error{"cannot start " + program + ": " + reason, error ? error->code : 0};
}

// Starts the child with standard input from /dev/null and standard output on `outputFd` (-1:
// as the flags say).
ErrorOr<GPid> start(const std::vector<std::string>& argv, const std::string& workingDirectory,
                    GSpawnFlags flags, GSpawnChildSetupFunc setup, int outputFd) {
    if (argv.empty() || argv.front().empty()) return Error{"no program to start", EINVAL};
    auto arguments = cArguments(argv);
    GError* error = nullptr;
    GPid pid = 0;
    const char* folder = workingDirectory.empty() ? nullptr : workingDirectory.c_str();
    auto allFlags = static_cast<GSpawnFlags>(flags | G_SPAWN_SEARCH_PATH);
    if (!g_spawn_async_with_fds(folder, arguments.data(), nullptr, allFlags, setup, nullptr, &pid,
                                -1, outputFd, -1, &error))
        return spawnError(argv, error);
    return pid;
}

} // namespace

ErrorOr<void> spawnDetached(const std::vector<std::string>& argv,
                            const std::string& workingDirectory) {
    // Without G_SPAWN_DO_NOT_REAP_CHILD GLib starts the program from an intermediate child that
    // exits at once, so the program is reparented and nothing is left to reap here.
    auto flags = static_cast<GSpawnFlags>(G_SPAWN_STDOUT_TO_DEV_NULL | G_SPAWN_STDERR_TO_DEV_NULL);
    auto pid = start(argv, workingDirectory, flags, newSession, -1);
    if (pid.isError()) return pid.releaseError();
    return {};
}

} // namespace px::process
