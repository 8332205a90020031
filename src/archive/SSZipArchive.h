#pragma once

#include "support/ErrorOr.h"

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

namespace px {

namespace archive {
struct PendingEntry;
} // namespace archive

// The record an entry is written from, filled from the item it packs.
struct ZipFileInfo {
    std::uint16_t dosDate = 0; // (year - 1980) << 9 | month << 5 | day, local time
    std::uint16_t dosTime = 0; // hour << 11 | minute << 5 | second / 2
    std::uint32_t internalFileAttributes = 0;
    std::uint32_t externalFileAttributes = 0; // Unix file type and permission bits << 16
};

// Writes a new zip archive entry by entry. Entries are only recorded by the write calls; the
// data is read, compressed (deflated, or stored when that does not make it smaller),
// encrypted and written by close(), on one worker thread per core, into a temporary file that
// becomes the archive once complete. A failed or cancelled close, or an archive never closed,
// leaves nothing at the path (an archive already there stays as it was).
class SSZipArchive {
  public:
    // Remembers the path; nothing is touched on disk.
    explicit SSZipArchive(std::string path);
    ~SSZipArchive();
    SSZipArchive(const SSZipArchive&) = delete;
    SSZipArchive& operator=(const SSZipArchive&) = delete;

    const std::string& path() const { return m_path; }

    // Starts a new archive. False when the archive's folder cannot take it.
    bool open();

    // Adds the file (symbolic links followed) encrypted with WinZip AES-256 and the password, if
    // any, named `withFileName` or else the file's own name. False, with no entry added, when
    // the file cannot be opened for reading or is not a regular file, or the name is already
    // taken.
    bool writeFileAtPath(const std::string& path, const std::optional<std::string>& withFileName,
                         const std::optional<std::string>& withPassword);
    // Adds an empty-folder entry named `withFolderName` + "/", with the folder's date and
    // permissions. Folder entries hold no data and are never encrypted.
    bool writeFolderAtPath(const std::string& path, const std::string& withFolderName,
                           const std::optional<std::string>& withPassword);

    // Called during close() each time an entry has been written, with the count so far.
    void setProgressHandler(std::function<void(std::size_t itemsDone)> handler);
    // Polled during close() from the closing thread, at least every 20 ms; once it answers true,
    // close() stops the workers and fails, leaving no archive.
    void setCancelPredicate(std::function<bool()> predicate);

    // Writes the archive. True when it is complete at the path. The archive is closed whatever
    // the result.
    bool close();

    // Why the last failing call failed.
    const std::optional<Error>& lastError() const { return m_lastError; }

    // Fills the DOS date and the external attributes from the item (symbolic links followed:
    // an entry holds what the link points to). Leaves the record as it was when the item
    // cannot be read.
    static void zipInfo(ZipFileInfo& info, const std::string& setAttributesOfItemAtPath);
    // Fills the DOS date from a time, in the local time zone. DOS dates run from 1980 to 2107;
    // times outside are clamped to the nearest end.
    static void zipInfo(ZipFileInfo& info, std::time_t setDate);

  private:
    bool addEntry(archive::PendingEntry entry);
    bool fail(Error error);

    std::string m_path;
    bool m_open = false;
    std::vector<archive::PendingEntry> m_entries;
    std::unordered_set<std::string> m_names;
    std::function<void(std::size_t)> m_progressHandler;
    std::function<bool()> m_cancelPredicate;
    std::optional<Error> m_lastError;
};

} // namespace px
