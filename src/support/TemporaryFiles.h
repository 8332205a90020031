#pragma once

#include "support/ErrorOr.h"

#include <string>

// Temporary items that a job writes beside its result before renaming them into place. Their
// names say whose they are: ".pxmenu-tmp-<pid>-<start time>-<random>", the process id and its
// start time (in clock ticks since boot, as /proc tells). The first time a process writes into
// a folder, it removes the temporaries there that a dead process left (a kill or a power cut
// in the middle of a job): those whose owner id is no longer running or now names a process
// started at another time. A temporary whose process still runs is never touched.
namespace px::io {

// A free temporary name in `folder`, after the folder's stale temporaries are gone.
std::string temporaryNameIn(const std::string& folder);
// The same beside `target`, in its folder.
std::string temporaryBeside(const std::string& target);
// Creates the temporary file (mode 0666 less the umask, or `mode`) and answers its path.
ErrorOr<std::string> createTemporaryBeside(const std::string& target, unsigned mode = 0666);

// Whether `name` (a file name, no folder) is one of the temporaries above.
bool isTemporaryName(const std::string& name);
// Removes the stale temporaries in `folder`; answers how many went.
int removeStaleTemporaries(const std::string& folder);

// Makes what was written to the file durable and reports any write that failed since it was
// opened (a full disk discovered at the last flush), before it may be published.
ErrorOr<void> syncFile(const std::string& path);
// The same for everything written on the file system holding `path`.
ErrorOr<void> syncFileSystemOf(const std::string& path);

} // namespace px::io
