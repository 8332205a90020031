#pragma once

#include "support/ErrorOr.h"

#include <string>

// The copy engine under "Copy to", "Move to" and paste: a file, or a folder with everything in
// it, copied with the kernel's fast paths (a reflink where the file system shares blocks, else
// copy_file_range in large chunks, else plain reads and writes). Permission bits and access and
// modification times (to the nanosecond) are kept; symbolic links are copied as links, pipes
// and sockets as new ones of their kind. Folders are walked through descriptors relative to
// their parents, so a tree of many small files costs no more than the work itself.
namespace px::filecopy {

// Copies the item at `source` to `target`, where nothing may exist yet. On failure whatever
// was made at `target` is removed again and the source is left as it was. Never follows a
// symbolic link, never blocks on a pipe.
ErrorOr<void> copyItem(const std::string& source, const std::string& target);

} // namespace px::filecopy
