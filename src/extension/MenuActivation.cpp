#include "extension/MenuActivation.h"

#include "support/FileIO.h"
#include "support/ProcessSpawn.h"
#include "support/Xdg.h"

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <glib.h>
#include <sys/stat.h>
#include <unistd.h>

#ifndef PX_PXMENU_PROGRAM
#define PX_PXMENU_PROGRAM "pxmenu"
#endif

namespace px {

namespace {

std::size_t argumentBytes(const std::vector<std::string>& argv) {
    std::size_t total = 0;
    for (const auto& argument : argv)
        total += argument.size() + 1 + sizeof(char*);
    return total;
}

// Half of what the system allows for arguments and environment together: the environment the
// program inherits takes its share.
std::size_t systemArgumentBudget() {
    long limit = ::sysconf(_SC_ARG_MAX);
    return limit > 0 ? static_cast<std::size_t>(limit) / 2 : 64 * 1024;
}

std::string selectionFolder() {
    std::string folder = xdg::runtimeDirectory() + "/pxmenu";
    g_mkdir_with_parents(folder.c_str(), 0700);
    return folder;
}

// A new private file holding the paths, each ended by a NUL byte.
ErrorOr<std::string> writePathsFile(const std::vector<std::string>& paths) {
    std::string name = selectionFolder() + "/selection-XXXXXX";
    int fd = ::mkostemp(name.data(), O_CLOEXEC);
    if (fd < 0) return Error::fromErrno("cannot write the selection file " + name, errno);
    io::FileDescriptor file(fd);
    std::string contents;
    for (const auto& path : paths)
        contents.append(path).push_back('\0');
    std::size_t written = 0;
    while (written < contents.size()) {
        ssize_t count = ::write(fd, contents.data() + written, contents.size() - written);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) {
            ::unlink(name.c_str());
            return Error::fromErrno("cannot write the selection file " + name, errno);
        }
        written += static_cast<std::size_t>(count);
    }
    return name;
}

} // namespace

std::string pxmenuProgram() {
    const char* override = std::getenv("PXMENU_PROGRAM");
    return override && *override ? override : PX_PXMENU_PROGRAM;
}

ActivationCommand activationCommand(const MenuRequest& request, std::int64_t tag,
                                    const std::vector<std::string>& keyPath,
                                    const std::string& pathsFile, std::size_t argumentBudget) {
    ActivationCommand command;
    auto& argv = command.argv;
    argv = {pxmenuProgram(), "run",
            "--ui",          "gui",
            "--tag",         std::to_string(tag),
            "--kind",        std::to_string(request.kind),
            "--target",      request.target};
    for (const auto& key : keyPath) {
        argv.push_back("--key");
        argv.push_back(key);
    }
    std::size_t pathBytes = argumentBytes(request.paths) + argumentBytes({"--"});
    if (argumentBytes(argv) + pathBytes > argumentBudget) {
        argv.push_back("--paths-from");
        argv.push_back(pathsFile);
        command.pathsInFile = true;
        return command;
    }
    argv.push_back("--");
    argv.insert(argv.end(), request.paths.begin(), request.paths.end());
    return command;
}

ErrorOr<void> activate(const MenuRequest& request, std::int64_t tag,
                       const std::vector<std::string>& keyPath) {
    const std::size_t budget = systemArgumentBudget();
    ActivationCommand command = activationCommand(request, tag, keyPath, {}, budget);
    if (command.pathsInFile) {
        std::string file = TRY(writePathsFile(request.paths));
        command = activationCommand(request, tag, keyPath, file, budget);
        auto started = process::spawnDetached(command.argv);
        if (started.isError()) ::unlink(file.c_str());
        return started;
    }
    return process::spawnDetached(command.argv);
}

void requestSetup() {
    static std::atomic<bool> requested{false};
    if (requested.exchange(true)) return;
    (void)process::spawnDetached({pxmenuProgram(), "setup"});
}

} // namespace px
