#include "archive/ZipFileWriter.h"

#include "archive/ZipHeaders.h"
#include "support/TemporaryFiles.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>

namespace px::archive {

namespace {

constexpr std::size_t kBufferSize = 256 * 1024;

// The process's umask, read without changing it.
mode_t currentUmask() {
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line))
        if (line.rfind("Umask:", 0) == 0)
            return static_cast<mode_t>(std::stoul(line.substr(6), nullptr, 8));
    return 022;
}

// The mode an archive already at the path has, else a new file's.
mode_t archiveMode(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) == 0) return status.st_mode & 07777;
    return 0666 & ~currentUmask();
}

} // namespace

ErrorOr<ZipFileWriter> ZipFileWriter::create(const std::string& path) {
    // Named as the program's temporaries are, so that one left by a killed job is removed by
    // the next job writing into the folder.
    std::string temporary = io::temporaryBeside(path);
    io::FileDescriptor fd(::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!fd.valid()) return Error::fromErrno("cannot create " + path, errno);
    ZipFileWriter writer(path, std::move(temporary), std::move(fd));
    if (::fchmod(writer.m_fd.get(), archiveMode(path)) != 0)
        return Error::fromErrno("cannot create " + path, errno);
    return writer;
}

ZipFileWriter::ZipFileWriter(std::string path, std::string temporary, io::FileDescriptor fd)
    : m_path(std::move(path)), m_temporary(std::move(temporary)), m_fd(std::move(fd)) {
    m_buffer.reserve(kBufferSize);
}

ZipFileWriter::ZipFileWriter(ZipFileWriter&& other) noexcept
    : m_path(std::move(other.m_path)), m_temporary(std::exchange(other.m_temporary, {})),
      m_fd(std::move(other.m_fd)), m_buffer(std::move(other.m_buffer)), m_offset(other.m_offset),
      m_records(std::move(other.m_records)), m_open(std::move(other.m_open)) {}

ZipFileWriter::~ZipFileWriter() {
    if (!m_temporary.empty()) ::unlink(m_temporary.c_str());
}

Error ZipFileWriter::writeError(int code) const {
    return Error::fromErrno("cannot write " + m_path, code);
}

ErrorOr<void> ZipFileWriter::writeOut(std::span<const std::byte> data) {
    std::size_t done = 0;
    while (done < data.size()) {
        ssize_t wrote = ::write(m_fd.get(), data.data() + done, data.size() - done);
        if (wrote < 0 && errno == EINTR) continue;
        if (wrote <= 0) return writeError(wrote < 0 ? errno : ENOSPC);
        done += static_cast<std::size_t>(wrote);
    }
    return {};
}

ErrorOr<void> ZipFileWriter::flush() {
    TRY(writeOut(std::as_bytes(std::span(m_buffer))));
    m_buffer.clear();
    return {};
}

ErrorOr<void> ZipFileWriter::writeAt(std::uint64_t offset, const std::string& bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        ssize_t wrote = ::pwrite(m_fd.get(), bytes.data() + done, bytes.size() - done,
                                 static_cast<off_t>(offset + done));
        if (wrote < 0 && errno == EINTR) continue;
        if (wrote <= 0) return writeError(wrote < 0 ? errno : ENOSPC);
        done += static_cast<std::size_t>(wrote);
    }
    return {};
}

ErrorOr<void> ZipFileWriter::write(std::span<const std::byte> data) {
    m_offset += data.size();
    if (m_buffer.size() + data.size() > kBufferSize) {
        TRY(flush());
        if (data.size() >= kBufferSize) return writeOut(data);
    }
    m_buffer.append(reinterpret_cast<const char*>(data.data()), data.size());
    return {};
}

ErrorOr<void> ZipFileWriter::beginEntry(ZipRecord& record) {
    record.offset = m_offset;
    record.zip64Local = headers::needsZip64Local(record.size, record.deflated, record.aes);
    std::string header;
    headers::appendLocalHeader(header, record);
    m_open = record;
    return write(std::as_bytes(std::span(header)));
}

ErrorOr<void> ZipFileWriter::endEntry(const ZipRecord& record) {
    ZipRecord final = record;
    final.offset = m_open.offset;
    final.zip64Local = m_open.zip64Local;
    if (final.crc != m_open.crc || final.size != m_open.size ||
        final.compressedSize != m_open.compressedSize) {
        std::string header;
        headers::appendLocalHeader(header, final);
        if (final.offset >= m_offset - m_buffer.size()) {
            // Still in the buffer.
            m_buffer.replace(final.offset - (m_offset - m_buffer.size()), header.size(), header);
        } else {
            TRY(writeAt(final.offset, header));
        }
    }
    m_records.push_back(std::move(final));
    return {};
}

ErrorOr<void> ZipFileWriter::commit() {
    const std::uint64_t directoryOffset = m_offset;
    std::string directory;
    for (const ZipRecord& record : m_records)
        headers::appendCentralHeader(directory, record);
    const std::uint64_t directorySize = directory.size();
    headers::appendEnd(directory, m_records.size(), directoryOffset, directorySize);
    TRY(write(std::as_bytes(std::span(directory))));
    TRY(flush());
    if (::fsync(m_fd.get()) != 0) return writeError(errno);
    if (::close(m_fd.release()) != 0) return writeError(errno);
    if (::rename(m_temporary.c_str(), m_path.c_str()) != 0)
        return Error::fromErrno("cannot create " + m_path, errno);
    m_temporary.clear();
    return {};
}

} // namespace px::archive
