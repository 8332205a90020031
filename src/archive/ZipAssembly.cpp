#include "archive/ZipAssembly.h"

#include "archive/ParallelEncoder.h"
#include "archive/WinZipAesStream.h"
#include "archive/ZipFileWriter.h"

#include <algorithm>
#include <cerrno>
#include <thread>
#include <zlib.h>

namespace px::archive {

namespace {

// The cancel request is looked at between stretches of this size.
constexpr std::size_t kWriteStretch = 64 * 1024;

Error cancelledError(const std::string& path) {
    return Error{"writing " + path + " was cancelled", ECANCELED};
}

class Assembly {
  public:
    Assembly(const std::string& path, std::vector<PendingEntry>& entries,
             const AssemblyHooks& hooks, ZipFileWriter& writer)
        : m_path(path), m_entries(entries), m_hooks(hooks), m_writer(writer),
          m_encoder(entries, limits()) {}

    ErrorOr<void> writeAll() {
        for (std::size_t index = 0; index < m_entries.size(); ++index) {
            TRY(writeEntry(index));
            if (m_hooks.entryWritten) m_hooks.entryWritten();
        }
        return {};
    }

    bool cancelled() {
        if (!m_cancelled && m_hooks.cancelled) m_cancelled = m_hooks.cancelled();
        return m_cancelled;
    }

  private:
    static ParallelEncoder::Limits limits() {
        ParallelEncoder::Limits limits;
        limits.workers = std::max(1u, std::thread::hardware_concurrency());
        return limits;
    }

    ErrorOr<EncodedPiece> take(std::size_t index, std::uint64_t piece) {
        auto taken = m_encoder.take(index, piece, [this] { return cancelled(); });
        if (taken.isError() && taken.error().code == ECANCELED) return cancelledError(m_path);
        return taken;
    }

    ErrorOr<void> writeData(std::span<const std::byte> data) {
        for (std::size_t done = 0; done < data.size(); done += kWriteStretch) {
            if (cancelled()) return cancelledError(m_path);
            TRY(m_writer.write(data.subspan(done, std::min(kWriteStretch, data.size() - done))));
        }
        return {};
    }

    ZipRecord recordFor(const PendingEntry& entry, const EncodedPiece& first, std::uint64_t pieces,
                        std::uint64_t size) const {
        ZipRecord record;
        record.name = entry.name;
        record.deflated = !first.stored;
        record.aes = first.keys.has_value();
        record.dosTime = entry.dosTime;
        record.dosDate = entry.dosDate;
        record.externalAttributes = entry.externalAttributes;
        record.size = pieces == 1 ? first.rawSize : size;
        if (pieces == 1) {
            record.crc = first.crc;
            record.compressedSize = first.bytes.size() + (record.aes ? ZipRecord::kAesOverhead : 0);
        }
        return record;
    }

    ErrorOr<void> writeEntry(std::size_t index) {
        if (cancelled()) return cancelledError(m_path);
        const std::uint64_t pieces = m_encoder.pieceCount(index);
        EncodedPiece first = TRY(take(index, 0));
        ZipRecord record =
            recordFor(m_entries[index], first, pieces, m_entries[index].source->size());
        TRY(m_writer.beginEntry(record));
        std::optional<WinZipAesStream> aes;
        if (first.keys) {
            aes = TRY(WinZipAesStream::start(*first.keys));
            TRY(m_writer.write(std::as_bytes(std::span(first.keys->salt))));
            TRY(m_writer.write(std::as_bytes(std::span(first.keys->passwordCheck))));
        }
        record.crc = 0;
        record.size = 0;
        record.compressedSize = record.aes ? ZipRecord::kAesOverhead : 0;
        for (std::uint64_t piece = 0; piece < pieces; ++piece) {
            EncodedPiece next = piece == 0 ? std::move(first) : TRY(take(index, piece));
            if (aes) TRY(aes->encrypt(next.bytes));
            TRY(writeData(next.bytes));
            record.crc = piece == 0
                             ? next.crc
                             : static_cast<std::uint32_t>(crc32_combine(
                                   record.crc, next.crc, static_cast<z_off_t>(next.rawSize)));
            record.size += next.rawSize;
            record.compressedSize += next.bytes.size();
        }
        if (aes) {
            const auto code = aes->finish();
            TRY(m_writer.write(std::as_bytes(std::span(code))));
        }
        return m_writer.endEntry(record);
    }

    const std::string& m_path;
    std::vector<PendingEntry>& m_entries;
    const AssemblyHooks& m_hooks;
    ZipFileWriter& m_writer;
    ParallelEncoder m_encoder;
    bool m_cancelled = false;
};

} // namespace

ErrorOr<void> assembleZip(const std::string& path, std::vector<PendingEntry>& entries,
                          const AssemblyHooks& hooks) {
    ZipFileWriter writer = TRY(ZipFileWriter::create(path));
    {
        Assembly assembly(path, entries, hooks, writer);
        TRY(assembly.writeAll());
        if (assembly.cancelled()) return cancelledError(path);
    }
    return writer.commit();
}

} // namespace px::archive
