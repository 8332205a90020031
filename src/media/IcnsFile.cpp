// The .icns container: big-endian lengths, every chunk's length counting its own 8-byte header.
#include "media/IcnsFile.h"

#include "media/ImageFile.h"
#include "support/FileIO.h"

#include <algorithm>
#include <cstring>

namespace px::media::icns {
namespace {

constexpr std::size_t kHeaderSize = 8;

void appendUInt32(std::vector<std::uint8_t>& out, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8)
        out.push_back(static_cast<std::uint8_t>(value >> shift));
}

std::uint32_t readUInt32(const std::uint8_t* bytes) {
    return (std::uint32_t{bytes[0]} << 24) | (std::uint32_t{bytes[1]} << 16) |
           (std::uint32_t{bytes[2]} << 8) | std::uint32_t{bytes[3]};
}

// The type is written as exactly four characters, padded with blanks as in "TOC ".
void appendHeader(std::vector<std::uint8_t>& out, std::string_view type, std::size_t length) {
    std::string fourCharacters(type.substr(0, 4));
    fourCharacters.resize(4, ' ');
    out.insert(out.end(), fourCharacters.begin(), fourCharacters.end());
    appendUInt32(out, static_cast<std::uint32_t>(length));
}

std::size_t chunkLength(const Chunk& chunk) {
    return kHeaderSize + chunk.data.size();
}

} // namespace

std::vector<std::uint8_t> encode(const std::vector<Chunk>& chunks) {
    std::size_t tocLength = kHeaderSize + kHeaderSize * chunks.size();
    std::size_t total = kHeaderSize + tocLength;
    for (const Chunk& chunk : chunks)
        total += chunkLength(chunk);
    std::vector<std::uint8_t> out;
    out.reserve(total);
    appendHeader(out, "icns", total);
    appendHeader(out, "TOC ", tocLength);
    for (const Chunk& chunk : chunks)
        appendHeader(out, chunk.type, chunkLength(chunk));
    for (const Chunk& chunk : chunks) {
        appendHeader(out, chunk.type, chunkLength(chunk));
        out.insert(out.end(), chunk.data.begin(), chunk.data.end());
    }
    return out;
}

std::optional<std::vector<Chunk>> decode(const std::vector<std::uint8_t>& data) {
    if (data.size() < kHeaderSize || std::memcmp(data.data(), "icns", 4) != 0) return {};
    if (readUInt32(data.data() + 4) != data.size()) return {};
    std::vector<Chunk> chunks;
    std::size_t offset = kHeaderSize;
    while (offset < data.size()) {
        if (data.size() - offset < kHeaderSize) return {};
        const std::uint8_t* header = data.data() + offset;
        std::uint32_t length = readUInt32(header + 4);
        if (length < kHeaderSize || length > data.size() - offset) return {};
        std::string type(reinterpret_cast<const char*>(header), 4);
        if (type != "TOC ") chunks.push_back({type, {header + kHeaderSize, header + length}});
        offset += length;
    }
    return chunks;
}

namespace {

bool startsWith(const std::vector<std::uint8_t>& data, std::initializer_list<std::uint8_t> sig) {
    return data.size() >= sig.size() && std::equal(sig.begin(), sig.end(), data.begin());
}

// PNG files, JPEG 2000 files and bare JPEG 2000 code streams; the older bitmap types are not
// images on their own.
bool holdsImageFile(const Chunk& chunk) {
    return startsWith(chunk.data, {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'}) ||
           startsWith(chunk.data, {0, 0, 0, 0x0c, 'j', 'P', ' ', ' ', '\r', '\n', 0x87, '\n'}) ||
           startsWith(chunk.data, {0xff, 0x4f, 0xff, 0x51});
}

// The image's header only; the pixels are decoded later, while the chunk is still alive.
std::optional<vips::VImage> openChunk(const Chunk& chunk) {
    try {
        return vips::VImage::new_from_buffer(chunk.data.data(), chunk.data.size(), "");
    } catch (const vips::VError&) {
        return {};
    }
}

} // namespace

std::optional<vips::VImage> loadLargestImage(const std::string& path) {
    auto bytes = io::readWholeFile(path);
    if (bytes.isError()) return {};
    const std::string& text = bytes.value();
    auto chunks = decode(std::vector<std::uint8_t>(text.begin(), text.end()));
    if (!chunks) return {};
    ensureVipsStarted();
    std::optional<vips::VImage> largest;
    for (const Chunk& chunk : *chunks) {
        if (!holdsImageFile(chunk)) continue;
        auto image = openChunk(chunk);
        if (image && (!largest || image->width() > largest->width())) largest = std::move(image);
    }
    // Decoded into memory before the file's bytes go away: the image reads the buffer lazily.
    if (!largest) return {};
    try {
        return largest->copy_memory();
    } catch (const vips::VError&) {
        return {};
    }
}

} // namespace px::media::icns
