#pragma once

#include "support/ErrorOr.h"

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

typedef struct z_stream_s z_stream;

namespace px::archive {

// Raw deflate of one piece of a large entry (zlib), so that the pieces, compressed apart on any
// thread, join into one stream: each piece is primed with the 32 KiB before it and ends on a
// byte boundary, the last one with the final block.
class ChunkDeflater {
  public:
    explicit ChunkDeflater(int level);
    ~ChunkDeflater();
    ChunkDeflater(const ChunkDeflater&) = delete;
    ChunkDeflater& operator=(const ChunkDeflater&) = delete;

    // Replaces `output` with the compressed piece.
    ErrorOr<void> compress(std::span<const std::byte> dictionary, std::span<const std::byte> input,
                           bool last, std::vector<std::byte>& output);

  private:
    std::unique_ptr<z_stream> m_stream;
};

} // namespace px::archive
