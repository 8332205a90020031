#include "archive/ZipHeaders.h"

namespace px::archive::headers {

namespace {

constexpr std::uint32_t kMax32 = 0xffffffffu;
constexpr std::uint16_t kMadeBy = (3 << 8) | 63; // Unix, zip 6.3
constexpr std::uint16_t kMethodAes = 99;
constexpr std::uint16_t kFlagEncrypted = 1;
constexpr std::uint16_t kFlagUtf8 = 1 << 11;
// The largest entry whose deflated data surely fits 32 bits (deflate's worst growth).
constexpr std::uint64_t kMaxDeflated32 = 4293656963u;

void put16(std::string& out, std::uint32_t value) {
    out.push_back(static_cast<char>(value & 0xff));
    out.push_back(static_cast<char>((value >> 8) & 0xff));
}

void put32(std::string& out, std::uint32_t value) {
    put16(out, value & 0xffff);
    put16(out, value >> 16);
}

void put64(std::string& out, std::uint64_t value) {
    put32(out, static_cast<std::uint32_t>(value));
    put32(out, static_cast<std::uint32_t>(value >> 32));
}

std::uint32_t clamp32(std::uint64_t value) {
    return value >= kMax32 ? kMax32 : static_cast<std::uint32_t>(value);
}

// Valid UTF-8 with at least one byte outside ASCII: only such names get the UTF-8 flag.
bool needsUtf8Flag(const std::string& name) {
    bool beyondAscii = false;
    for (std::size_t i = 0; i < name.size();) {
        const auto lead = static_cast<unsigned char>(name[i]);
        std::size_t length = lead < 0x80       ? 1
                             : lead >> 5 == 6  ? 2
                             : lead >> 4 == 14 ? 3
                             : lead >> 3 == 30 ? 4
                                               : 0;
        if (length == 0 || i + length > name.size()) return false;
        for (std::size_t k = 1; k < length; ++k)
            if ((static_cast<unsigned char>(name[i + k]) & 0xc0) != 0x80) return false;
        beyondAscii = beyondAscii || length > 1;
        i += length;
    }
    return beyondAscii;
}

bool isFolder(const ZipRecord& record) {
    return !record.name.empty() && record.name.back() == '/';
}

std::uint16_t versionNeeded(const ZipRecord& record, bool zip64) {
    if (record.aes) return 51;
    if (zip64) return 45;
    if (record.deflated || isFolder(record)) return 20;
    return 10;
}

std::uint16_t flags(const ZipRecord& record) {
    std::uint16_t bits = record.aes ? kFlagEncrypted : 0;
    if (needsUtf8Flag(record.name)) bits |= kFlagUtf8;
    return bits;
}

std::uint32_t crcField(const ZipRecord& record) {
    return record.aes && record.size < 20 ? 0 : record.crc;
}

void appendAesExtra(std::string& out, const ZipRecord& record) {
    put16(out, 0x9901);
    put16(out, 7);
    put16(out, 2); // vendor version AE-2
    out += "AE";
    out.push_back(3); // AES-256
    put16(out, record.deflated ? 8 : 0);
}

// The fixed fields shared by both headers, from the version needed to the name's length.
void appendCommon(std::string& out, const ZipRecord& record, bool zip64, std::uint32_t sizeField,
                  std::uint32_t compressedField, std::size_t extraLength) {
    put16(out, versionNeeded(record, zip64));
    put16(out, flags(record));
    put16(out, record.aes ? kMethodAes : record.deflated ? 8 : 0);
    put16(out, record.dosTime);
    put16(out, record.dosDate);
    put32(out, crcField(record));
    put32(out, compressedField);
    put32(out, sizeField);
    put16(out, static_cast<std::uint32_t>(record.name.size()));
    put16(out, static_cast<std::uint32_t>(extraLength));
}

} // namespace

bool needsZip64Local(std::uint64_t size, bool deflated, bool aes) {
    const std::uint64_t overhead = aes ? ZipRecord::kAesOverhead : 0;
    return deflated ? size > kMaxDeflated32 - overhead : size + overhead >= kMax32;
}

void appendLocalHeader(std::string& out, const ZipRecord& record) {
    std::string extra;
    if (record.zip64Local) {
        put16(extra, 0x0001);
        put16(extra, 16);
        put64(extra, record.size);
        put64(extra, record.compressedSize);
    }
    if (record.aes) appendAesExtra(extra, record);
    put32(out, 0x04034b50);
    const std::uint32_t size = record.zip64Local ? kMax32 : clamp32(record.size);
    const std::uint32_t compressed = record.zip64Local ? kMax32 : clamp32(record.compressedSize);
    appendCommon(out, record, record.zip64Local, size, compressed, extra.size());
    out += record.name;
    out += extra;
}

void appendCentralHeader(std::string& out, const ZipRecord& record) {
    std::string extra;
    std::string zip64;
    if (record.size >= kMax32) put64(zip64, record.size);
    if (record.compressedSize >= kMax32) put64(zip64, record.compressedSize);
    if (record.offset >= kMax32) put64(zip64, record.offset);
    if (!zip64.empty()) {
        put16(extra, 0x0001);
        put16(extra, static_cast<std::uint32_t>(zip64.size()));
        extra += zip64;
    }
    if (record.aes) appendAesExtra(extra, record);
    put32(out, 0x02014b50);
    put16(out, kMadeBy);
    appendCommon(out, record, !zip64.empty(), clamp32(record.size), clamp32(record.compressedSize),
                 extra.size());
    put16(out, 0); // comment
    put16(out, 0); // disk
    put16(out, 0); // internal attributes
    put32(out, record.externalAttributes);
    put32(out, clamp32(record.offset));
    out += record.name;
    out += extra;
}

void appendEnd(std::string& out, std::uint64_t entries, std::uint64_t directoryOffset,
               std::uint64_t directorySize) {
    const bool zip64 = entries >= 0xffff || directoryOffset >= kMax32 || directorySize >= kMax32;
    if (zip64) {
        const std::uint64_t recordOffset = directoryOffset + directorySize;
        put32(out, 0x06064b50);
        put64(out, 44);
        put16(out, kMadeBy);
        put16(out, 45);
        put32(out, 0);
        put32(out, 0);
        put64(out, entries);
        put64(out, entries);
        put64(out, directorySize);
        put64(out, directoryOffset);
        put32(out, 0x07064b50);
        put32(out, 0);
        put64(out, recordOffset);
        put32(out, 1);
    }
    put32(out, 0x06054b50);
    put16(out, 0);
    put16(out, 0);
    put16(out, zip64 ? 0xffff : static_cast<std::uint32_t>(entries));
    put16(out, zip64 ? 0xffff : static_cast<std::uint32_t>(entries));
    put32(out, clamp32(directorySize));
    put32(out, clamp32(directoryOffset));
    put16(out, 0); // comment
}

} // namespace px::archive::headers
