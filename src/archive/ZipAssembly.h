#pragma once

#include "archive/PendingEntry.h"
#include "support/ErrorOr.h"

#include <functional>
#include <string>
#include <vector>

namespace px::archive {

struct AssemblyHooks {
    std::function<void()> entryWritten;
    // Polled from the calling thread while it waits for data and between stretches of writing.
    std::function<bool()> cancelled;
};

// Writes the entries, in order, as a zip archive at the path: workers (one per core) compress
// ahead, this thread encrypts and writes. Complete at the path, or nothing new left there.
ErrorOr<void> assembleZip(const std::string& path, std::vector<PendingEntry>& entries,
                          const AssemblyHooks& hooks);

} // namespace px::archive
