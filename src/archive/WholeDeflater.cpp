#include "archive/WholeDeflater.h"

#include <libdeflate.h>
#include <new>

namespace px::archive {

void WholeDeflater::Free::operator()(libdeflate_compressor* compressor) const {
    libdeflate_free_compressor(compressor);
}

WholeDeflater::WholeDeflater(int level) : m_compressor(libdeflate_alloc_compressor(level)) {
    if (!m_compressor) throw std::bad_alloc();
}

std::size_t WholeDeflater::compress(std::span<const std::byte> input, std::span<std::byte> output) {
    return libdeflate_deflate_compress(m_compressor.get(), input.data(), input.size(),
                                       output.data(), output.size());
}

} // namespace px::archive

namespace px::archive {

std::size_t WholeDeflater::bound(std::size_t inputSize) {
    return libdeflate_deflate_compress_bound(m_compressor.get(), inputSize);
}

} // namespace px::archive
