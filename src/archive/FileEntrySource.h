#pragma once

#include "archive/EntrySource.h"
#include "support/FileIO.h"

#include <string>
#include <sys/stat.h>

namespace px::archive {

// Reads a regular file (symbolic links followed) into an archive entry. The file is checked when
// the source is made and opened again only when its entry is compressed, so thousands of pending
// entries hold no file descriptors.
class FileEntrySource final : public EntrySource {
  public:
    // Fails when the path cannot be opened for reading or is not a regular file.
    static ErrorOr<FileEntrySource> make(std::string path);

    std::uint64_t size() const override;
    ErrorOr<void> open() override;
    ErrorOr<std::size_t> readAt(std::uint64_t offset, std::span<std::byte> buffer) override;
    void close() override;

    const struct stat& fileStatus() const { return m_status; }

  private:
    FileEntrySource(std::string path, const struct stat& status)
        : m_path(std::move(path)), m_status(status) {}

    std::string m_path;
    struct stat m_status;
    io::FileDescriptor m_fd;
};

// The data of an empty-folder entry: nothing.
class EmptyEntrySource final : public EntrySource {
  public:
    std::uint64_t size() const override { return 0; }
    ErrorOr<void> open() override { return {}; }
    ErrorOr<std::size_t> readAt(std::uint64_t, std::span<std::byte>) override {
        return std::size_t{0};
    }
    void close() override {}
};

} // namespace px::archive
