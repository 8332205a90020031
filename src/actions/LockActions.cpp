// Locking and unlocking the selected items.
#include "actions/Commands.h"
#include "actions/FailureLog.h"
#include "actions/PermissionLock.h"
#include "support/FileHash.h"

namespace px::commands {

// The selection is locked item by item until the first locked item; from there on every item
// is unlocked, whatever its state. So a selection of unlocked items ends locked, one of locked
// items ends unlocked, and a mixed one ends unlocked from its first locked item on. Failures
// are not shown.
void lockUnlock(ActionContext& cx) {
    bool unlocking = false;
    for (const auto& path : cx.selection()) {
        if (filehash::isLocked(path)) unlocking = true;
        auto done = unlocking ? permlock::unlock(path) : permlock::lock(path);
        if (done.isError()) logFailure(done.error());
    }
}

} // namespace px::commands
