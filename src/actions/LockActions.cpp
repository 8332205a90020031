// Locking and unlocking the selected items.
#include "actions/FailureLog.h"
#include "actions/FileHash.h"
#include "actions/PermissionLock.h"
#include "extension/FinderSync.h"

namespace px {

// The selection is locked item by item until the first locked item; from there on every item
// is unlocked, whatever its state. So a selection of unlocked items ends locked, one of locked
// items ends unlocked, and a mixed one ends unlocked from its first locked item on. Failures
// are not shown.
void FinderSync::lockUnlockFiles(const PXMenuItem::Ptr&) {
    bool unlocking = false;
    for (const auto& path : selectURLs()) {
        if (filehash::isLocked(path)) unlocking = true;
        auto done = unlocking ? permlock::unlock(path) : permlock::lock(path);
        if (done.isError()) logFailure(done.error());
    }
}

} // namespace px
