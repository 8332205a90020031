#include "support/FileStamp.h"

#include <sys/stat.h>
#include <time.h>

namespace px::io {

namespace {

long long nanos(const timespec& time) {
    return time.tv_sec * 1000000000LL + time.tv_nsec;
}

} // namespace

FileStamp FileStamp::of(const std::string& path) {
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0) return {};
    return {info.st_dev, info.st_ino, info.st_size, nanos(info.st_mtim), nanos(info.st_ctim)};
}

long long FileStamp::nowNanos() {
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    return nanos(now);
}

} // namespace px::io
