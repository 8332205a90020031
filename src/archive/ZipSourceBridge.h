#pragma once

// Internal to the libzip wrapper: presents an EntrySource to libzip as a zip_source_t.

#include "archive/EntrySource.h"
#include "archive/ZipHandle.h"

#include <atomic>
#include <ctime>
#include <functional>
#include <memory>
#include <optional>

typedef struct zip_source zip_source_t;

namespace px::archive {

// State shared by a handle and all its sources while the archive is written.
struct ZipHandle::Hooks {
    std::function<void()> itemFinished;
    std::function<bool()> cancelled;
    bool wasCancelled = false;
    std::optional<Error> sourceError; // the first failure of a source, clearer than libzip's

    bool checkCancelled() {
        if (!wasCancelled && cancelled) wasCancelled = cancelled();
        return wasCancelled;
    }
};

// Wraps `source` for libzip; libzip owns the result (freed with the entry or the archive).
// Reads fail once the hooks report a cancel, so the archive write stops at the next piece.
zip_source_t* makeZipSource(zip_t* zip, std::unique_ptr<EntrySource> source,
                            std::time_t modificationTime, ZipHandle::Hooks& hooks);

} // namespace px::archive
