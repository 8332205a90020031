#pragma once

#include <algorithm>
#include <string>
#include <sys/types.h>

namespace px::io {

// What tells one version of a file or folder from another without reading it: its identity,
// size, modification time and status-change time. A folder's stamp changes when an entry is
// added, removed or renamed and when its permissions change; a file replaced by rename gets
// a new inode. A missing path has the empty stamp.
struct FileStamp {
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = -1;
    long long modifiedNanos = 0;
    long long changedNanos = 0;

    static FileStamp of(const std::string& path);
    // The wall clock, in the unit of the times above.
    static long long nowNanos();

    bool exists() const { return size >= 0; }
    // Whether a change made after `readAtNanos` is sure to give another stamp. File systems
    // keep times in steps (a clock tick, two seconds on FAT), so a path changed just before it
    // was read can change again within the same step and keep its stamp; what was read from
    // it then cannot be kept on the strength of the stamp.
    bool isSettledAt(long long readAtNanos) const {
        return std::max(modifiedNanos, changedNanos) + kTimeStepNanos < readAtNanos;
    }
    bool operator==(const FileStamp&) const = default;

    static constexpr long long kTimeStepNanos = 2'000'000'000;
};

} // namespace px::io
