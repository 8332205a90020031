#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace px::plist {

// The object table of binary property-list bytes, for checks that walk the objects before a
// reader does: a header, the objects, a table of their offsets and a 32-byte trailer giving the
// sizes of offsets and object references, the object count, the top object and where the table
// starts. Reads past the end of the bytes give 0, so a walk over a damaged file stays inside it.
// The table views the bytes: they must outlive it.
class BinaryTable {
  public:
    explicit BinaryTable(std::string_view bytes);

    // False for bytes too short for a trailer, or a trailer whose sizes or table do not fit.
    bool plausible() const;

    std::uint64_t size() const { return m_bytes.size(); }
    std::uint64_t objectCount() const { return m_count; }
    std::uint64_t topObject() const { return m_top; }

    std::uint8_t byteAt(std::uint64_t at) const;
    // The high four bits of the marker byte of the object at `at`: its type.
    std::uint8_t typeAt(std::uint64_t at) const { return byteAt(at) >> 4; }
    // A big-endian unsigned number of `width` bytes.
    std::uint64_t number(std::uint64_t at, std::size_t width) const;
    // Where object `index` starts; past the end for an index beyond the table.
    std::uint64_t offsetOf(std::uint64_t index) const;
    // The element count in the marker of the object at `at`, and where its contents start.
    std::uint64_t countAt(std::uint64_t at, std::uint64_t& contents) const;
    // Whether `count` object references starting at `refs` lie within the bytes.
    bool referencesFit(std::uint64_t refs, std::uint64_t count) const;
    // The object index held by reference `i` of the references starting at `refs`.
    std::uint64_t referenceAt(std::uint64_t refs, std::uint64_t i) const {
        return number(refs + i * m_refSize, m_refSize);
    }

  private:
    std::string_view m_bytes;
    std::size_t m_offsetSize = 0, m_refSize = 0;
    std::uint64_t m_count = 0, m_top = 0, m_table = 0;
};

} // namespace px::plist
