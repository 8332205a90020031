#pragma once

#include "archive/ZipRecord.h"
#include "support/ErrorOr.h"
#include "support/FileIO.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace px::archive {

// Lays out a zip archive entry by entry in a hidden temporary file beside the path
// (".px-zip-<pid>-XXXXXX"), and renames it onto the path once the central directory is written
// and the data is on disk. A writer dropped before commit() removes its temporary file.
class ZipFileWriter {
  public:
    static ErrorOr<ZipFileWriter> create(const std::string& path);

    ZipFileWriter(ZipFileWriter&& other) noexcept;
    ZipFileWriter& operator=(ZipFileWriter&&) = delete;
    ZipFileWriter(const ZipFileWriter&) = delete;
    ~ZipFileWriter();

    // Starts an entry at the current end: the local header as the record says so far. The
    // offset and, for the local header, whether it needs 64-bit sizes are filled in.
    ErrorOr<void> beginEntry(ZipRecord& record);
    ErrorOr<void> write(std::span<const std::byte> data);
    // Ends the entry with its final CRC and sizes, patching the local header when they differ
    // from what it was written with.
    ErrorOr<void> endEntry(const ZipRecord& record);

    // The central directory, then the archive takes the path.
    ErrorOr<void> commit();

  private:
    ZipFileWriter(std::string path, std::string temporary, io::FileDescriptor fd);
    ErrorOr<void> flush();
    ErrorOr<void> writeOut(std::span<const std::byte> data);
    ErrorOr<void> writeAt(std::uint64_t offset, const std::string& bytes);
    Error writeError(int code) const;

    std::string m_path;
    std::string m_temporary;
    io::FileDescriptor m_fd;
    std::string m_buffer;
    std::uint64_t m_offset = 0; // bytes written, buffered ones included
    std::vector<ZipRecord> m_records;
    ZipRecord m_open;
};

} // namespace px::archive
