#include "config/PlistBinaryKeys.h"

#include <cstdint>
#include <unordered_set>
#include <vector>

namespace px::plist {

namespace {

// A binary property list: a header, objects, a table of their offsets and a 32-byte trailer.
class BinaryKeys {
  public:
    explicit BinaryKeys(std::string_view bytes) : m_bytes(bytes) {}

    bool readable() {
        if (m_bytes.size() < 8 + 32) return true;
        std::size_t trailer = m_bytes.size() - 32;
        m_offsetSize = byteAt(trailer + 6);
        m_refSize = byteAt(trailer + 7);
        m_count = number(trailer + 8, 8);
        m_table = number(trailer + 24, 8);
        if (!plausible()) return true;
        // Each dictionary and each key is looked at once. A real file costs about its own size;
        // crafted tables that point at the same bytes again and again run out of budget.
        m_budget = 4 * m_bytes.size() + 64;
        m_keyState.assign(m_count, KeyState::Unchecked);
        for (std::uint64_t i = 0; i < m_count; ++i) {
            std::uint64_t at = offsetOf(i);
            if (!m_dictionaries.insert(at).second) continue;
            if (!dictionaryKeysReadable(at)) return false;
        }
        return true;
    }

  private:
    std::uint8_t byteAt(std::size_t at) const {
        return at < m_bytes.size() ? static_cast<std::uint8_t>(m_bytes[at]) : 0;
    }

    std::uint64_t number(std::size_t at, std::size_t size) const {
        std::uint64_t value = 0;
        for (std::size_t i = 0; i < size && at + i < m_bytes.size(); ++i)
            value = (value << 8) | byteAt(at + i);
        return value;
    }

    bool plausible() const {
        bool sizes = m_offsetSize >= 1 && m_offsetSize <= 8 && m_refSize >= 1 && m_refSize <= 8;
        return sizes && m_count > 0 && m_count <= m_bytes.size() && m_table < m_bytes.size() &&
               m_table + m_count * m_offsetSize <= m_bytes.size();
    }

    std::uint64_t offsetOf(std::uint64_t index) const {
        return index < m_count ? number(m_table + index * m_offsetSize, m_offsetSize)
                               : m_bytes.size();
    }

    // The element count in an object's marker, and where its contents start.
    std::uint64_t countAt(std::uint64_t at, std::uint64_t& contents) const {
        std::uint64_t count = byteAt(at) & 0xF;
        contents = at + 1;
        if (count == 0xF) {
            std::size_t size = std::size_t{1} << (byteAt(contents) & 0x3);
            count = number(contents + 1, size);
            contents += 1 + size;
        }
        return count;
    }

    bool dictionaryKeysReadable(std::uint64_t at) {
        if (at >= m_bytes.size() || (byteAt(at) >> 4) != 0xD) return true;
        std::uint64_t refs = 0;
        std::uint64_t count = countAt(at, refs);
        if (count > m_bytes.size() || refs + count * m_refSize > m_bytes.size()) return true;
        for (std::uint64_t i = 0; i < count; ++i)
            if (!keyReadable(number(refs + i * m_refSize, m_refSize))) return false;
        return true;
    }

    bool keyReadable(std::uint64_t index) {
        if (index >= m_count) return true; // a broken reference: the reader refuses it
        if (--m_budget < 0) return false;
        KeyState& state = m_keyState[index];
        if (state == KeyState::Unchecked)
            state = unitsReadable(offsetOf(index)) ? KeyState::Readable : KeyState::Unreadable;
        return state == KeyState::Readable;
    }

    bool unitsReadable(std::uint64_t at) {
        if (at >= m_bytes.size() || (byteAt(at) >> 4) != 0x6) return true;
        std::uint64_t text = 0;
        std::uint64_t units = countAt(at, text);
        for (std::uint64_t i = 0; i < units && text + 2 * i + 1 < m_bytes.size(); ++i) {
            if (--m_budget < 0) return false;
            if (number(text + 2 * i, 2) == 0) return false;
        }
        return true;
    }

    enum class KeyState : std::uint8_t { Unchecked, Readable, Unreadable };

    std::string_view m_bytes;
    std::size_t m_offsetSize = 0, m_refSize = 0;
    std::uint64_t m_count = 0, m_table = 0;
    std::int64_t m_budget = 0;
    std::vector<KeyState> m_keyState;
    std::unordered_set<std::uint64_t> m_dictionaries;
};

} // namespace

bool binaryKeysAreReadable(std::string_view bytes) {
    return !bytes.starts_with("bplist") || BinaryKeys(bytes).readable();
}

} // namespace px::plist
