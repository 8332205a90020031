#include "archive/ChunkDeflater.h"

#include <cerrno>
#include <climits>
#include <new>
#include <zlib.h>

namespace px::archive {

namespace {

Error deflateError() {
    return Error{"the deflate library failed", EIO};
}

} // namespace

ChunkDeflater::ChunkDeflater(int level) : m_stream(std::make_unique<z_stream>()) {
    if (deflateInit2(m_stream.get(), level, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY) != Z_OK)
        throw std::bad_alloc();
}

ChunkDeflater::~ChunkDeflater() {
    deflateEnd(m_stream.get());
}

ErrorOr<void> ChunkDeflater::compress(std::span<const std::byte> dictionary,
                                      std::span<const std::byte> input, bool last,
                                      std::vector<std::byte>& output) {
    z_stream& stream = *m_stream;
    if (deflateReset(&stream) != Z_OK) return deflateError();
    if (!dictionary.empty() &&
        deflateSetDictionary(&stream, reinterpret_cast<const Bytef*>(dictionary.data()),
                             static_cast<uInt>(dictionary.size())) != Z_OK)
        return deflateError();
    // Room for the worst case plus the flush marker.
    output.resize(deflateBound(&stream, input.size()) + 16);
    stream.next_in = const_cast<Bytef*>(reinterpret_cast<const Bytef*>(input.data()));
    stream.avail_in = static_cast<uInt>(input.size());
    stream.next_out = reinterpret_cast<Bytef*>(output.data());
    stream.avail_out = static_cast<uInt>(output.size());
    const int result = deflate(&stream, last ? Z_FINISH : Z_SYNC_FLUSH);
    if (result != (last ? Z_STREAM_END : Z_OK) || stream.avail_in != 0) return deflateError();
    output.resize(output.size() - stream.avail_out);
    return {};
}

} // namespace px::archive
