#pragma once

#include <functional>
#include <map>
#include <ostream>
#include <string>
#include <sys/types.h>

namespace px::test {

// What a copy must carry over from one item: its kind, permission bits, modification time to
// the nanosecond, and its contents (a file's bytes, a link's target).
struct ItemState {
    char kind = '?'; // 'f' file, 'd' folder, 'l' link, 'p' pipe, 's' socket
    unsigned mode = 0;
    long long mtimeNs = 0;
    std::string contents;
    bool operator==(const ItemState&) const = default;
};
std::ostream& operator<<(std::ostream& out, const ItemState& item);

// Every item under `root` (the root itself as ""), by its path relative to the root.
using TreeState = std::map<std::string, ItemState>;
TreeState snapshot(const std::string& root);

// Sets an item's access and modification times (nanoseconds since 1970), not following links.
void setTimes(const std::string& path, long long atimeNs, long long mtimeNs);

// Runs `work` in a child process whose writes cannot make a file larger than `limit` bytes
// (they fail with EFBIG); answers the child's exit status, -1 when it did not exit.
int inChildWithFileSizeLimit(off_t limit, const std::function<int()>& work);

} // namespace px::test
