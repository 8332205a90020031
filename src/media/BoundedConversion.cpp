#include "media/BoundedConversion.h"

#include "actions/FailureLog.h"
#include "support/PathName.h"
#include "support/TemporaryFiles.h"

#include <cerrno>
#include <charconv>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sstream>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace px::media {
namespace {

using Result = ConvertOutcome::Result;
using Clock = std::chrono::steady_clock;

// The address sanitizer reserves terabytes of address space up front: its builds limit time only.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kLimitAddressSpace = false;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool kLimitAddressSpace = false;
#else
constexpr bool kLimitAddressSpace = true;
#endif
#else
constexpr bool kLimitAddressSpace = true;
#endif
constexpr rlim_t kAddressSpace = rlim_t{6} << 30; // bytes
constexpr rlim_t kProcessorSeconds = 1800;
constexpr int kDefaultStallSeconds = 60;

int stallSeconds() {
    const char* text = std::getenv("PXMENU_WORK_TIMEOUT");
    int seconds = 0;
    if (text && std::from_chars(text, text + std::strlen(text), seconds).ec == std::errc{} &&
        seconds > 0)
        return seconds;
    return kDefaultStallSeconds;
}

// Between fork and exec only async-signal-safe calls: the parent may have other threads.
[[noreturn]] void becomeWorker(const char* program, char* const* argv, int output) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    const int quiet = ::open("/dev/null", O_RDWR);
    ::dup2(quiet, STDIN_FILENO);
    ::dup2(output, STDOUT_FILENO);
    ::dup2(quiet, STDERR_FILENO); // the decoders' complaints: the outcome says enough
    const rlimit space{kAddressSpace, kAddressSpace}, cpu{kProcessorSeconds, kProcessorSeconds};
    if (kLimitAddressSpace) ::setrlimit(RLIMIT_AS, &space);
    ::setrlimit(RLIMIT_CPU, &cpu);
    ::execv(program, argv);
    ::_exit(127);
}

struct Reading {
    std::string pending;
    std::optional<ConvertOutcome> outcome;
};

void takeLine(const std::string& line, Reading& reading, const PdfProgress& progress) {
    std::istringstream words(line);
    std::string kind;
    words >> kind;
    if (kind == "progress") {
        long long count = 0, index = 0;
        if (words >> count >> index && progress) progress(count, index);
    } else if (kind == "outcome") {
        int result = 0, width = 0, height = 0;
        if (words >> result >> width >> height && result >= 0 &&
            result <= static_cast<int>(Result::NotSquare))
            reading.outcome = ConvertOutcome{static_cast<Result>(result), width, height};
    }
}

// Reads the worker's lines until it closes its end; false when it stalled past the limit.
bool readUntilDone(int fd, Reading& reading, const PdfProgress& progress) {
    const auto stall = std::chrono::seconds(stallSeconds());
    auto deadline = Clock::now() + stall;
    char buffer[4096];
    for (;;) {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
        if (left.count() <= 0) return false;
        pollfd watch{fd, POLLIN, 0};
        const int ready = ::poll(&watch, 1, static_cast<int>(left.count()));
        if (ready < 0 && errno == EINTR) continue;
        if (ready <= 0) return ready < 0;
        const ssize_t got = ::read(fd, buffer, sizeof buffer);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return true;
        reading.pending.append(buffer, static_cast<std::size_t>(got));
        for (std::size_t end; (end = reading.pending.find('\n')) != std::string::npos;) {
            takeLine(reading.pending.substr(0, end), reading, progress);
            reading.pending.erase(0, end + 1);
            deadline = Clock::now() + stall;
        }
    }
}

ErrorOr<std::string> workerProgram() {
    const std::optional<std::string> library = imagingLibraryPath();
    if (!library) {
        const ErrorOr<Imaging*> loaded = imaging(); // answers the library's own "not installed"
        if (loaded.isError()) return loaded.error();
        return Error{"the image library is not installed", ENOENT};
    }
    std::string program = path::deletingLastPathComponent(*library) + "/pxmenu-imaging-worker";
    if (::access(program.c_str(), X_OK) == 0) return program;
    return Error{"the image worker " + program + " is not installed", ENOENT};
}

} // namespace

ConvertOutcome convertBounded(const std::string& path, const std::string& key, int iconType,
                              const PdfProgress& progress) {
    const ErrorOr<std::string> program = workerProgram();
    if (program.isError()) {
        logFailure(program.error());
        return {Result::Failed};
    }
    std::string type = std::to_string(iconType), source = path, target = key;
    char* argv[] = {const_cast<char*>(program.value().c_str()), source.data(), target.data(),
                    type.data(), nullptr};
    int pipe[2];
    if (::pipe2(pipe, O_CLOEXEC) != 0) return {Result::Failed};
    const pid_t worker = ::fork();
    if (worker == 0) becomeWorker(program.value().c_str(), argv, pipe[1]);
    ::close(pipe[1]);
    Reading reading;
    const bool finished = worker > 0 && readUntilDone(pipe[0], reading, progress);
    ::close(pipe[0]);
    if (worker < 0) return {Result::Failed};
    if (!finished) ::kill(worker, SIGKILL);
    int status = 0;
    while (::waitpid(worker, &status, 0) < 0 && errno == EINTR) {
    }
    // The outcome line comes once the work is done: what the process does after it (a leak
    // checker's verdict in a sanitizer build) does not change it.
    if (finished && reading.outcome) return *reading.outcome;
    // Killed, out of memory or time, or crashed: what it wrote beside the file goes.
    io::removeStaleTemporaries(path::deletingLastPathComponent(path));
    logFailure({"cannot convert " + path +
                (finished ? ": the converter failed" : ": the converter stopped responding")});
    return {Result::Failed};
}

} // namespace px::media
