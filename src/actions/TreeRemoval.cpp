#include "actions/TreeRemoval.h"

#include "support/FileIO.h"
#include "support/PathName.h"

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace px::filecopy {

namespace {

struct DirCloser {
    void operator()(DIR* dir) const { ::closedir(dir); }
};

class Remover {
  public:
    explicit Remover(Permissions permissions) : m_permissions(permissions) {}

    ErrorOr<void> remove(int folder, const char* name, const std::string& shown) {
        if (::unlinkat(folder, name, 0) == 0 || errno == ENOENT) return {};
        if (errno != EISDIR) return Error::fromErrno("cannot remove " + shown, errno);
        TRY(empty(folder, name, shown));
        if (::unlinkat(folder, name, AT_REMOVEDIR) == 0 || errno == ENOENT) return {};
        return Error::fromErrno("cannot remove " + shown, errno);
    }

  private:
    // Removes everything inside the folder `name`.
    ErrorOr<void> empty(int folder, const char* name, const std::string& shown) {
        if (m_permissions == Permissions::MakeWritable) {
            // Best effort: a folder that stays closed fails at the open below, with its reason.
            [[maybe_unused]] const int opened = ::fchmodat(folder, name, S_IRWXU, 0);
        }
        int fd = ::openat(folder, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
        if (fd < 0) return Error::fromErrno("cannot remove " + shown, errno);
        std::unique_ptr<DIR, DirCloser> dir(::fdopendir(fd));
        if (!dir) {
            const int failure = errno;
            ::close(fd);
            return Error::fromErrno("cannot remove " + shown, failure);
        }
        for (;;) {
            errno = 0;
            const dirent* entry = ::readdir(dir.get());
            if (!entry) break;
            const std::string_view entryName = entry->d_name;
            if (entryName == "." || entryName == "..") continue;
            TRY(remove(::dirfd(dir.get()), entry->d_name,
                       path::appendingPathComponent(shown, entryName)));
        }
        if (errno != 0) return Error::fromErrno("cannot list " + shown, errno);
        return {};
    }

    Permissions m_permissions;
};

} // namespace

ErrorOr<void> removeTree(const std::string& path, Permissions permissions) {
    std::string folder = path::deletingLastPathComponent(path);
    const std::string name = path::lastPathComponent(path);
    if (name.empty() || name == "/" || name == "." || name == "..")
        return Error{"will not remove " + path, EINVAL};
    if (folder.empty()) folder = ".";
    io::FileDescriptor parent(::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!parent.valid()) {
        if (errno == ENOENT) return {};
        return Error::fromErrno("cannot remove " + path, errno);
    }
    return Remover(permissions).remove(parent.get(), name.c_str(), path);
}

} // namespace px::filecopy
