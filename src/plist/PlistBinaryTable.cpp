#include "plist/PlistBinaryTable.h"

namespace px::plist {

namespace {
constexpr std::size_t kHeaderSize = 8, kTrailerSize = 32;
}

BinaryTable::BinaryTable(std::string_view bytes) : m_bytes(bytes) {
    if (m_bytes.size() < kHeaderSize + kTrailerSize) return;
    std::size_t trailer = m_bytes.size() - kTrailerSize;
    m_offsetSize = byteAt(trailer + 6);
    m_refSize = byteAt(trailer + 7);
    m_count = number(trailer + 8, 8);
    m_top = number(trailer + 16, 8);
    m_table = number(trailer + 24, 8);
}

bool BinaryTable::plausible() const {
    bool sizes = m_offsetSize >= 1 && m_offsetSize <= 8 && m_refSize >= 1 && m_refSize <= 8;
    return sizes && m_count > 0 && m_count <= m_bytes.size() && m_table < m_bytes.size() &&
           m_table + m_count * m_offsetSize <= m_bytes.size();
}

std::uint8_t BinaryTable::byteAt(std::uint64_t at) const {
    return at < m_bytes.size() ? static_cast<std::uint8_t>(m_bytes[at]) : 0;
}

std::uint64_t BinaryTable::number(std::uint64_t at, std::size_t width) const {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < width && at + i < m_bytes.size(); ++i)
        value = (value << 8) | byteAt(at + i);
    return value;
}

std::uint64_t BinaryTable::offsetOf(std::uint64_t index) const {
    return index < m_count ? number(m_table + index * m_offsetSize, m_offsetSize) : m_bytes.size();
}

std::uint64_t BinaryTable::countAt(std::uint64_t at, std::uint64_t& contents) const {
    std::uint64_t count = byteAt(at) & 0xF;
    contents = at + 1;
    if (count == 0xF && contents < m_bytes.size()) {
        std::size_t width = std::size_t{1} << (byteAt(contents) & 0x3);
        count = number(contents + 1, width);
        contents += 1 + width;
    }
    return count;
}

bool BinaryTable::referencesFit(std::uint64_t refs, std::uint64_t count) const {
    return count <= m_bytes.size() && refs + count * m_refSize <= m_bytes.size();
}

} // namespace px::plist
