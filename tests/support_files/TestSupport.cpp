#include "TestSupport.h"

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <poll.h>
#include <spawn.h>
#include <sstream>
#include <stdexcept>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace px::test {

TempDir::TempDir() {
    std::string pattern = (std::filesystem::temp_directory_path() / "pxmenu-test-XXXXXX").string();
    if (!::mkdtemp(pattern.data())) throw std::runtime_error("mkdtemp failed");
    m_path = pattern;
}

TempDir::~TempDir() {
    std::error_code ignored;
    // Restore write permission first so that tests may leave read-only items behind.
    for (auto it = std::filesystem::recursive_directory_iterator(m_path, ignored);
         it != std::filesystem::recursive_directory_iterator(); it.increment(ignored))
        std::filesystem::permissions(it->path(), std::filesystem::perms::owner_all,
                                     std::filesystem::perm_options::add, ignored);
    std::filesystem::remove_all(m_path, ignored);
}

std::string TempDir::write(const std::string& name, const std::string& contents) const {
    std::string path = *this / name;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream(path, std::ios::binary) << contents;
    return path;
}

std::string TempDir::mkdir(const std::string& name) const {
    std::string path = *this / name;
    std::filesystem::create_directories(path);
    return path;
}

ScopedEnv::ScopedEnv(std::string name, std::optional<std::string> value) : m_name(std::move(name)) {
    if (const char* old = std::getenv(m_name.c_str())) m_old = old;
    if (value)
        ::setenv(m_name.c_str(), value->c_str(), 1);
    else
        ::unsetenv(m_name.c_str());
}

ScopedEnv::~ScopedEnv() {
    if (m_old)
        ::setenv(m_name.c_str(), m_old->c_str(), 1);
    else
        ::unsetenv(m_name.c_str());
}

ScopedXdg::ScopedXdg()
    : m_home("HOME", m_root.path()), m_config("XDG_CONFIG_HOME", m_root / ".config"),
      m_data("XDG_DATA_HOME", m_root / ".local/share"),
      m_cache("XDG_CACHE_HOME", m_root / ".cache"), m_runtime("XDG_RUNTIME_DIR", m_root / "run") {
    m_root.mkdir(".config");
    m_root.mkdir(".local/share");
    m_root.mkdir("run");
}

std::string readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream buffer;
    buffer << in.rdbuf();
    return buffer.str();
}

bool exists(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::exists(std::filesystem::symlink_status(path, ignored));
}

namespace {

void drain(int outFd, int errFd, ProcessResult& result) {
    pollfd fds[2] = {{outFd, POLLIN, 0}, {errFd, POLLIN, 0}};
    int open = 2;
    char buffer[65536];
    while (open > 0 && ::poll(fds, 2, -1) > 0) {
        for (int i = 0; i < 2; ++i) {
            if (fds[i].fd < 0 || !(fds[i].revents & (POLLIN | POLLHUP))) continue;
            ssize_t got = ::read(fds[i].fd, buffer, sizeof buffer);
            if (got <= 0) {
                ::close(fds[i].fd);
                fds[i].fd = -1;
                --open;
                continue;
            }
            (i == 0 ? result.out : result.err).append(buffer, static_cast<size_t>(got));
        }
    }
}

} // namespace

ProcessResult runProcess(const std::vector<std::string>& argv, const std::string& input) {
    int in[2], out[2], err[2];
    if (::pipe2(in, O_CLOEXEC) || ::pipe2(out, O_CLOEXEC) || ::pipe2(err, O_CLOEXEC))
        throw std::runtime_error("pipe failed");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, in[0], 0);
    posix_spawn_file_actions_adddup2(&actions, out[1], 1);
    posix_spawn_file_actions_adddup2(&actions, err[1], 2);
    std::vector<char*> args;
    for (const auto& arg : argv)
        args.push_back(const_cast<char*>(arg.c_str()));
    args.push_back(nullptr);
    pid_t pid = 0;
    int spawned = ::posix_spawnp(&pid, args[0], &actions, nullptr, args.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    ::close(in[0]);
    ::close(out[1]);
    ::close(err[1]);
    ProcessResult result;
    if (spawned != 0) {
        ::close(in[1]);
        ::close(out[0]);
        ::close(err[0]);
        result.err = "cannot start " + argv[0];
        return result;
    }
    if (!input.empty()) (void)!::write(in[1], input.data(), input.size());
    ::close(in[1]);
    drain(out[0], err[0], result);
    int status = 0;
    ::waitpid(pid, &status, 0);
    result.exitStatus = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return result;
}

std::vector<std::string> listing(const std::string& folder) {
    std::vector<std::string> names;
    for (const auto& item : std::filesystem::directory_iterator(folder))
        names.push_back(item.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

unsigned modeOf(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 ? (info.st_mode & 07777) : 0;
}

} // namespace px::test
