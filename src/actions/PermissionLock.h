#pragma once

#include "support/ErrorOr.h"

#include <optional>
#include <string>

// Locking an item makes it read-only for everyone: every write bit is cleared, and the bits it
// had are kept (see ModeAttribute.h) so that unlocking can give them back. An item counts as
// locked when its owner may not write to it (filehash::isLocked). Symbolic links are followed.
namespace px::permlock {

// The mode of a locked item: the same bits without any write bit.
unsigned lockedMode(unsigned current);
// The mode an unlock gives: the current bits with their write bits replaced by the saved ones,
// or, without saved bits (none were kept, or the file system has no user attributes), the
// current bits plus the owner's write bit. The owner may always write afterwards.
unsigned unlockedMode(unsigned current, std::optional<unsigned> saved);

// Locks an unlocked item; an item that is locked already is left as it is.
ErrorOr<void> lock(const std::string& path);
// Unlocks a locked item and forgets the kept bits; for an unlocked item it only forgets them.
ErrorOr<void> unlock(const std::string& path);

} // namespace px::permlock
