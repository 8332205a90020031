#pragma once

#include "actions/FileCreation.h"
#include "support/ErrorOr.h"

#include <string>

// Putting a finished item under its final name with rename(2), so that the name shows either
// the old item or the complete new one.
namespace px::placement {

// Renames `from` to `to`. With Existing::Keep it fails with EEXIST, changing nothing, when
// something is at `to`. With Existing::Replace the item at `to` is replaced: atomically where
// rename(2) can (a file over a file, a folder over an empty folder); else it is first renamed
// aside, put back should the rename fail, and removed once `from` is in its place. Fails with
// EXDEV, changing nothing, when the two lie on different file systems.
ErrorOr<void> place(const std::string& from, const std::string& to, creation::Existing existing);

} // namespace px::placement
