#pragma once

#include "actions/FileCreation.h"
#include "support/ErrorOr.h"

#include <string>

// Copying and moving one item to a final path, as "Copy to", "Move to" and paste do it: the new
// item appears under its name only when it is complete, an item it replaces goes only then, and
// the source is never the item replaced.
namespace px::transfer {

using creation::Existing;

// True when replacing `target` would destroy `source`: both name the same item (the same path,
// or the same file through another name), or `target` is a folder that holds `source`.
bool replacesSource(const std::string& source, const std::string& target);

// Copies the item at `source` (see filecopy::copyItem) to `target`. The copy is written under a
// hidden temporary name in the target's folder and renamed to `target` once complete; a failed
// copy leaves nothing behind. With Existing::Keep an item that meanwhile appeared at `target`
// makes the copy fail (EEXIST); with Existing::Replace that item is swapped out once the copy
// is in place. Refused: a folder copied into itself, and any replacement of the source.
ErrorOr<void> copyItem(const std::string& source, const std::string& target, Existing existing);

// Moves the item at `source` to `target`: rename(2) within one file system; across file
// systems a copy as copyItem makes it, after which the source is removed. The same refusals as
// copyItem.
ErrorOr<void> moveItem(const std::string& source, const std::string& target, Existing existing);

} // namespace px::transfer
