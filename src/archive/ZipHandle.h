#pragma once

#include "archive/EntrySource.h"
#include "support/ErrorOr.h"

#include <cstdint>
#include <ctime>
#include <functional>
#include <memory>
#include <string>

typedef struct zip zip_t;

namespace px::archive {

// How one entry is stored.
struct ZipEntryOptions {
    int compressionLevel = 6;             // 0 stores the data; 1 to 9 deflate it at that level
    std::string password;                 // empty: the entry is not encrypted
    bool aes = true;                      // WinZip AES-256; otherwise traditional zip encryption
    std::time_t modificationTime = 0;     // written as the entry's DOS date and time
    std::uint32_t externalAttributes = 0; // Unix type and permission bits in the upper 16 bits
};

// A new zip archive being assembled with libzip. Entries only record their sources; everything
// is written by close() into a temporary file beside the path, which is renamed onto the path
// once complete. A handle dropped without a successful close() leaves nothing behind.
class ZipHandle {
  public:
    static ErrorOr<ZipHandle> create(const std::string& path);

    ZipHandle(ZipHandle&& other) noexcept;
    ZipHandle& operator=(ZipHandle&& other) noexcept;
    ZipHandle(const ZipHandle&) = delete;
    ZipHandle& operator=(const ZipHandle&) = delete;
    ~ZipHandle();

    // Names are stored byte for byte; a name already in the archive is refused.
    ErrorOr<void> add(const std::string& name, std::unique_ptr<EntrySource> source,
                      const ZipEntryOptions& options);

    // Writes the archive. `itemFinished` runs after each entry's data has been read to its end;
    // `cancelled` is polled while data is copied, and once it answers true the write stops.
    // Whatever the outcome, the handle is spent afterwards.
    ErrorOr<void> close(std::function<void()> itemFinished, std::function<bool()> cancelled);

    struct Hooks;

  private:
    ZipHandle(zip_t* zip, std::string path, std::string temporary);
    ErrorOr<void> publish();
    ErrorOr<void> configure(std::uint64_t index, const ZipEntryOptions& options);
    ErrorOr<void> writeEmptyArchive();
    Error failure();
    void discard();

    zip_t* m_zip = nullptr;
    std::string m_path;
    std::string m_temporary;
    std::unique_ptr<Hooks> m_hooks;
};

} // namespace px::archive
