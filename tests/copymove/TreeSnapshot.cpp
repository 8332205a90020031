#include "TreeSnapshot.h"

#include "support_files/TestSupport.h"

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace px::test {

namespace fs = std::filesystem;

namespace {

char kindOf(mode_t mode) {
    if (S_ISREG(mode)) return 'f';
    if (S_ISDIR(mode)) return 'd';
    if (S_ISLNK(mode)) return 'l';
    if (S_ISFIFO(mode)) return 'p';
    if (S_ISSOCK(mode)) return 's';
    return '?';
}

ItemState stateOf(const fs::path& path) {
    struct stat info {};
    if (::lstat(path.c_str(), &info) != 0) return {};
    ItemState item{kindOf(info.st_mode),
                   static_cast<unsigned>(info.st_mode & 07777),
                   info.st_mtim.tv_sec * 1000000000LL + info.st_mtim.tv_nsec,
                   {}};
    if (item.kind == 'f') item.contents = readFile(path);
    if (item.kind == 'l') item.contents = fs::read_symlink(path).native();
    if (item.kind == 'l') item.mode = 0; // link modes mean nothing on Linux
    return item;
}

timespec toTimespec(long long ns) {
    return {static_cast<time_t>(ns / 1000000000LL), static_cast<long>(ns % 1000000000LL)};
}

} // namespace

std::ostream& operator<<(std::ostream& out, const ItemState& item) {
    return out << item.kind << " " << std::oct << item.mode << std::dec << " " << item.mtimeNs
               << " " << item.contents.size() << " bytes";
}

TreeState snapshot(const std::string& root) {
    TreeState tree;
    tree[""] = stateOf(root);
    if (tree[""].kind != 'd') return tree;
    for (const auto& entry : fs::recursive_directory_iterator(root))
        tree[entry.path().native().substr(root.size() + 1)] = stateOf(entry.path());
    return tree;
}

void setTimes(const std::string& path, long long atimeNs, long long mtimeNs) {
    const timespec times[2] = {toTimespec(atimeNs), toTimespec(mtimeNs)};
    ::utimensat(AT_FDCWD, path.c_str(), times, AT_SYMLINK_NOFOLLOW);
}

int inChildWithFileSizeLimit(off_t limit, const std::function<int()>& work) {
    const pid_t child = ::fork();
    if (child == 0) {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit bound{static_cast<rlim_t>(limit), static_cast<rlim_t>(limit)};
        ::setrlimit(RLIMIT_FSIZE, &bound);
        ::_exit(work());
    }
    int status = 0;
    if (child < 0 || ::waitpid(child, &status, 0) != child) return -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace px::test
