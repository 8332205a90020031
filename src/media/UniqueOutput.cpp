#include "media/UniqueOutput.h"

#include "support/FileHash.h"
#include "support/PathName.h"
#include "support/TemporaryFiles.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace px::media {
namespace {

// Moves `from` to `to` unless something is already there (EEXIST then). File systems without
// an exclusive rename get a hard link and an unlink, which refuses an existing name too.
int renameWithoutReplacing(const std::string& from, const std::string& to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return 0;
    if (errno != EINVAL && errno != ENOSYS) return errno;
    if (::link(from.c_str(), to.c_str()) != 0) return errno;
    ::unlink(from.c_str());
    return 0;
}

} // namespace

ErrorOr<UniqueOutput> UniqueOutput::beside(const std::string& target) {
    return UniqueOutput(TRY(io::createTemporaryBeside(target)));
}

UniqueOutput::UniqueOutput(UniqueOutput&& other) noexcept
    : m_temporary(std::move(other.m_temporary)) {
    other.m_temporary.clear();
}

UniqueOutput::~UniqueOutput() {
    if (!m_temporary.empty()) ::unlink(m_temporary.c_str());
}

ErrorOr<std::string> UniqueOutput::publish(const std::string& wanted) {
    TRY(io::syncFile(m_temporary));
    for (int tries = 0; tries < 1000; ++tries) {
        std::string name = filehash::uniquePath(wanted);
        const int failure = renameWithoutReplacing(m_temporary, name);
        if (failure == 0) {
            m_temporary.clear();
            return name;
        }
        if (failure != EEXIST) return Error::fromErrno("cannot create " + name, failure);
    }
    return Error{"no free name for " + wanted, EEXIST};
}

} // namespace px::media
