#pragma once

#include <cstddef>
#include <memory>
#include <span>

struct libdeflate_compressor;

namespace px::archive {

// Raw deflate of a whole buffer at once (libdeflate). One per worker thread.
class WholeDeflater {
  public:
    explicit WholeDeflater(int level);

    // Compresses `input` into `output`; 0 when the result would not fit, which the caller takes
    // to mean the data does not shrink.
    std::size_t compress(std::span<const std::byte> input, std::span<std::byte> output);
    // The room that always suffices for `inputSize` bytes.
    std::size_t bound(std::size_t inputSize);

  private:
    struct Free {
        void operator()(libdeflate_compressor* compressor) const;
    };
    std::unique_ptr<libdeflate_compressor, Free> m_compressor;
};

} // namespace px::archive
