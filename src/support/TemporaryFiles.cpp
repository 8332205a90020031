#include "support/TemporaryFiles.h"

#include "support/FileIO.h"

#include <cerrno>
#include <charconv>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <mutex>
#include <optional>
#include <random>
#include <set>
#include <sys/stat.h>
#include <unistd.h>

namespace px::io {

namespace {

constexpr std::string_view kPrefix = ".pxmenu-tmp-";

// Field 22 of /proc/<pid>/stat, after the command name in parentheses (which may hold spaces).
std::optional<unsigned long long> startTimeOf(const std::string& pid) {
    auto stat = readWholeFile("/proc/" + pid + "/stat");
    if (stat.isError()) return std::nullopt;
    const std::string& text = stat.value();
    std::size_t at = text.rfind(')');
    if (at == std::string::npos) return std::nullopt;
    for (int field = 2; field < 22; ++field) {
        at = text.find(' ', at + 1);
        if (at == std::string::npos) return std::nullopt;
    }
    unsigned long long ticks = 0;
    auto [end, failure] = std::from_chars(text.data() + at + 1, text.data() + text.size(), ticks);
    if (failure != std::errc{}) return std::nullopt;
    return ticks;
}

const std::string& ownPrefix() {
    static const std::string prefix = [] {
        const std::string pid = std::to_string(::getpid());
        return std::string(kPrefix) + pid + "-" + std::to_string(startTimeOf(pid).value_or(0)) +
               "-";
    }();
    return prefix;
}

struct Owner {
    std::string pid;
    unsigned long long startTime = 0;
};

// The owner named by a temporary name: ".pxmenu-tmp-<pid>-<start>-<random>[...]".
std::optional<Owner> ownerOf(std::string_view name) {
    if (name.substr(0, kPrefix.size()) != kPrefix) return std::nullopt;
    name.remove_prefix(kPrefix.size());
    Owner owner;
    unsigned long pid = 0;
    auto [afterPid, bad] = std::from_chars(name.data(), name.data() + name.size(), pid);
    if (bad != std::errc{} || pid == 0 || afterPid == name.data() + name.size() || *afterPid != '-')
        return std::nullopt;
    owner.pid = std::to_string(pid);
    const char* end = name.data() + name.size();
    auto [afterStart, bad2] = std::from_chars(afterPid + 1, end, owner.startTime);
    if (bad2 != std::errc{} || afterStart == end || *afterStart != '-') return std::nullopt;
    return owner;
}

bool ownerIsGone(const Owner& owner) {
    if (std::to_string(::getpid()) == owner.pid) return false;
    auto running = startTimeOf(owner.pid);
    return !running || *running != owner.startTime;
}

// Each folder is swept once per process: a job writing thousands of items into one folder
// reads it once.
bool firstVisit(const std::string& folder) {
    static std::mutex mutex;
    static std::set<std::string> visited;
    std::lock_guard guard(mutex);
    return visited.insert(folder).second;
}

std::string randomPart() {
    static thread_local std::mt19937_64 random{std::random_device{}()};
    static constexpr char kLetters[] = "abcdefghijklmnopqrstuvwxyz0123456789";
    std::string part(6, 'x');
    for (char& c : part)
        c = kLetters[random() % (sizeof kLetters - 1)];
    return part;
}

std::string folderOf(const std::string& target) {
    const auto slash = target.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : target.substr(0, slash);
}

} // namespace

bool isTemporaryName(const std::string& name) {
    return ownerOf(name).has_value();
}

int removeStaleTemporaries(const std::string& folder) {
    // Without /proc nothing can be told about the owners, so nothing goes.
    if (!startTimeOf("self")) return 0;
    std::unique_ptr<DIR, int (*)(DIR*)> dir(::opendir(folder.c_str()), &::closedir);
    if (!dir) return 0;
    const int fd = ::dirfd(dir.get());
    int removed = 0;
    while (const dirent* entry = ::readdir(dir.get())) {
        auto owner = ownerOf(entry->d_name);
        struct stat info {};
        if (!owner || ::fstatat(fd, entry->d_name, &info, AT_SYMLINK_NOFOLLOW) != 0 ||
            info.st_uid != ::geteuid() || !ownerIsGone(*owner))
            continue;
        std::error_code failed;
        std::filesystem::remove_all(folder + "/" + entry->d_name, failed);
        if (!failed) ++removed;
    }
    return removed;
}

std::string temporaryNameIn(const std::string& folder) {
    if (firstVisit(folder)) removeStaleTemporaries(folder);
    for (;;) {
        std::string candidate = (folder == "/" ? "" : folder) + "/" + ownPrefix() + randomPart();
        if (!exists(candidate)) return candidate;
    }
}

std::string temporaryBeside(const std::string& target) {
    return temporaryNameIn(folderOf(target));
}

ErrorOr<std::string> createTemporaryBeside(const std::string& target, unsigned mode) {
    const std::string folder = folderOf(target);
    for (int tries = 0; tries < 100; ++tries) {
        std::string candidate = temporaryNameIn(folder);
        FileDescriptor fd(::open(candidate.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
                                 static_cast<mode_t>(mode)));
        if (fd.valid()) return candidate;
        if (errno != EEXIST) return Error::fromErrno("cannot write in " + folder, errno);
    }
    return Error{"cannot find a free temporary name in " + folder, EEXIST};
}

ErrorOr<void> syncFile(const std::string& path) {
    FileDescriptor fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
    if (!fd.valid()) return Error::fromErrno("cannot open " + path, errno);
    if (::fsync(fd.get()) != 0) return Error::fromErrno("cannot write " + path, errno);
    if (::close(fd.release()) != 0) return Error::fromErrno("cannot write " + path, errno);
    return {};
}

ErrorOr<void> syncFileSystemOf(const std::string& path) {
    FileDescriptor fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
    if (!fd.valid()) return Error::fromErrno("cannot open " + path, errno);
    if (::syncfs(fd.get()) != 0) return Error::fromErrno("cannot write " + path, errno);
    return {};
}

} // namespace px::io
