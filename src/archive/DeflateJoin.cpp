#include "archive/DeflateJoin.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <memory>
#include <zlib.h>

namespace px::archive {

namespace {

Error damaged() {
    return Error{"a compressed piece could not be joined", EIO};
}

struct InflateEnd {
    void operator()(z_stream* stream) const {
        inflateEnd(stream);
        delete stream;
    }
};

} // namespace

// inflate() with Z_BLOCK returns at every block boundary, the end of the last block included;
// there data_type holds the bits read but not used yet, so the next block's header starts at bit
// 8 * read - unused, and after the last block they are the padding of the final byte.
ErrorOr<void> makeJoinable(std::vector<std::byte>& stream) {
    std::unique_ptr<z_stream, InflateEnd> inflater(new z_stream{});
    if (inflateInit2(inflater.get(), -MAX_WBITS) != Z_OK) return damaged();
    z_stream& z = *inflater;
    z.next_in = reinterpret_cast<Bytef*>(stream.data());
    z.avail_in = static_cast<uInt>(stream.size());
    std::array<Bytef, 64 * 1024> scratch;
    std::uint64_t lastHeaderBit = 0;
    unsigned unusedBits = 8;
    for (;;) {
        z.next_out = scratch.data();
        z.avail_out = scratch.size();
        const int result = inflate(&z, Z_BLOCK);
        if (result == Z_STREAM_END) break;
        if (result != Z_OK && result != Z_BUF_ERROR) return damaged();
        if (result == Z_BUF_ERROR && z.avail_in == 0) return damaged();
        if ((z.data_type & 128) == 0) continue;
        const unsigned bits = z.data_type & 63;
        if (z.data_type & 64)
            unusedBits = bits; // after the last block, before the rest of its byte is dropped
        else
            lastHeaderBit = 8 * std::uint64_t(z.total_in) - bits;
    }
    if (z.total_in != stream.size() || unusedBits >= 8) return damaged();
    auto* bytes = reinterpret_cast<std::uint8_t*>(stream.data());
    bytes[lastHeaderBit / 8] &= static_cast<std::uint8_t>(~(1u << (lastHeaderBit % 8)));
    // An empty stored block: three header bits of zero, padding, then lengths 0 and ~0.
    bytes[stream.size() - 1] &= static_cast<std::uint8_t>((1u << (8 - unusedBits)) - 1);
    if (unusedBits < 3) stream.push_back(std::byte{0});
    for (std::uint8_t byte : {0x00, 0x00, 0xff, 0xff})
        stream.push_back(std::byte{byte});
    return {};
}

} // namespace px::archive
