#include "HandOff.h"

#include "SessionSocket.h"

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace px::handoff {

namespace {

using namespace std::chrono_literals;

constexpr auto kStartTimeout = 10s;
constexpr auto kAcceptTimeout = 20s;
constexpr auto kWorkTimeout = std::chrono::hours(24);

bool nobodyServes(const Error& error) {
    return error.code == ENOENT || error.code == ECONNREFUSED;
}

[[noreturn]] void execDetached(const std::string& program, const std::string& log) {
    ::setsid();
    if (::fork() != 0) ::_exit(0); // the grandchild is nobody's child
    const int null = ::open("/dev/null", O_RDWR);
    const int errors = ::open(log.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
    ::dup2(null, 0);
    ::dup2(null, 1);
    ::dup2(errors >= 0 ? errors : null, 2);
    ::close_range(3, ~0U, 0);
    if (::chdir("/") != 0) ::_exit(127); // "/" is always there; a failure is a broken system
    const char* argv[] = {program.c_str(), nullptr};
    if (program.find('/') == std::string::npos)
        ::execvp(program.c_str(), const_cast<char* const*>(argv));
    else
        ::execv(program.c_str(), const_cast<char* const*>(argv));
    ::_exit(127);
}

ErrorOr<void> start(const std::string& program, const SessionPaths& paths) {
    const pid_t child = ::fork();
    if (child < 0) return Error::fromErrno("cannot start " + program, errno);
    if (child == 0) execDetached(program, paths.folder + "/extension.log");
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return {};
}

// Connects, starting the program once when nobody serves, retrying until it listens.
ErrorOr<io::FileDescriptor> connectOrStart(const std::string& program, const SessionPaths& paths) {
    auto connected = connectTo(paths.socket);
    if (!connected.isError() || !nobodyServes(connected.error())) return connected;
    TRY(start(program, paths));
    const auto deadline = std::chrono::steady_clock::now() + kStartTimeout;
    auto pause = 2ms;
    while (std::chrono::steady_clock::now() < deadline) {
        std::this_thread::sleep_for(pause);
        pause = std::min(pause * 2, std::chrono::milliseconds(50));
        connected = connectTo(paths.socket);
        if (!connected.isError() || !nobodyServes(connected.error())) return connected;
    }
    return Error{"the extension process " + program + " did not start serving in time (see " +
                     paths.folder + "/extension.log)",
                 ETIMEDOUT};
}

} // namespace

ErrorOr<Reply> handOff(const Request& request, const std::string& program) {
    const SessionPaths paths = TRY(sessionPaths());
    io::FileDescriptor connection = TRY(connectOrStart(program, paths));
    TRY(writeAll(connection.get(), encodeRequest(request)));
    FrameReader reader;
    Fields accepted = TRY(readFrame(connection.get(), reader, kAcceptTimeout));
    Reply reply = TRY(decodeReply(accepted));
    if (reply.kind != Reply::Kind::Accepted || !request.wait) return reply;
    Fields finished = TRY(readFrame(connection.get(), reader, kWorkTimeout));
    return decodeReply(finished);
}

std::string extensionProgram() {
    if (const char* chosen = std::getenv("PXMENU_EXTENSION"); chosen && *chosen) return chosen;
    std::error_code error;
    const auto self = std::filesystem::read_symlink("/proc/self/exe", error);
    if (!error) {
        for (const auto& candidate : {self.parent_path() / "pxmenu-extension",
                                      self.parent_path().parent_path() / "gui/pxmenu-extension"})
            if (::access(candidate.c_str(), X_OK) == 0) return candidate.string();
    }
    return "pxmenu-extension";
}

} // namespace px::handoff
