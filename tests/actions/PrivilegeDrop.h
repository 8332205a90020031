#pragma once

#include <cerrno>
#include <functional>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace px::test {

// Runs the check in a child process that, when the tests run as root, has dropped to the
// "nobody" user, so that permission bits mean what they mean to an ordinary user. The folder
// is opened to others first so that the child can reach what is inside.
inline bool checkUnprivileged(const std::string& folder, const std::function<bool()>& check) {
    ::chmod(folder.c_str(), 0755);
    pid_t child = ::fork();
    if (child < 0) return false;
    if (child == 0) {
        if (::geteuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0)) ::_exit(2);
        ::_exit(check() ? 0 : 1);
    }
    int status = 0;
    while (::waitpid(child, &status, 0) < 0)
        if (errno != EINTR) return false;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace px::test
