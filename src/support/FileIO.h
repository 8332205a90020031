#pragma once

#include "support/ErrorOr.h"

#include <string>
#include <string_view>

namespace px::io {

ErrorOr<std::string> readWholeFile(const std::string& path);
// Writes the bytes to a new file beside `path`, flushes it and renames it over `path`, so a
// reader sees the old file or the new one, never half of one; a write, flush or close that
// fails removes the new file and leaves `path` as it was. The old file's mode is kept.
ErrorOr<void> replaceFileAtomically(const std::string& path, std::string_view bytes);
// Creates the folder and any missing parents.
ErrorOr<void> makeDirectories(const std::string& path, unsigned mode = 0755);
bool exists(const std::string& path);

// An open file descriptor, closed on destruction.
class FileDescriptor {
  public:
    explicit FileDescriptor(int fd = -1) : m_fd(fd) {}
    FileDescriptor(FileDescriptor&& other) noexcept : m_fd(other.release()) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept;
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor();

    int get() const { return m_fd; }
    bool valid() const { return m_fd >= 0; }
    int release();

  private:
    int m_fd;
};

// An exclusive advisory lock (flock) on a lock file, held for the object's life.
class FileLock {
  public:
    static ErrorOr<FileLock> acquire(const std::string& lockPath);

  private:
    explicit FileLock(FileDescriptor fd) : m_fd(std::move(fd)) {}
    FileDescriptor m_fd;
};

} // namespace px::io
