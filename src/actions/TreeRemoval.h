#pragma once

#include "support/ErrorOr.h"

#include <string>

namespace px::filecopy {

// How removeTree treats folders without write permission for their owner.
enum class Permissions {
    AsTheyAre,   // such a folder's contents stay, and the removal fails
    MakeWritable // such folders are made writable first (for items the program made itself)
};

// Removes the item at `path` and, for a folder, everything in it, without following symbolic
// links. Stops at the first item that cannot go and answers why; nothing at `path` counts as
// done.
ErrorOr<void> removeTree(const std::string& path, Permissions permissions);

} // namespace px::filecopy
