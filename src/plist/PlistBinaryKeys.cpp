#include "plist/PlistBinaryKeys.h"

#include "plist/PlistBinaryTable.h"

#include <cstdint>
#include <unordered_set>
#include <vector>

namespace px::plist {

namespace {

// Walks every dictionary of the object table and reads each of its keys once.
class BinaryKeys {
  public:
    explicit BinaryKeys(std::string_view bytes) : m_table(bytes) {}

    bool readable() {
        if (!m_table.plausible()) return true;
        // Each dictionary and each key is looked at once. A real file costs about its own size;
        // crafted tables that point at the same bytes again and again run out of budget.
        m_budget = static_cast<std::int64_t>(4 * m_table.size() + 64);
        m_keyState.assign(m_table.objectCount(), KeyState::Unchecked);
        for (std::uint64_t i = 0; i < m_table.objectCount(); ++i) {
            std::uint64_t at = m_table.offsetOf(i);
            if (!m_dictionaries.insert(at).second) continue;
            if (!dictionaryKeysReadable(at)) return false;
        }
        return true;
    }

  private:
    bool dictionaryKeysReadable(std::uint64_t at) {
        if (at >= m_table.size() || m_table.typeAt(at) != 0xD) return true;
        std::uint64_t refs = 0;
        std::uint64_t count = m_table.countAt(at, refs);
        if (!m_table.referencesFit(refs, count)) return true;
        for (std::uint64_t i = 0; i < count; ++i)
            if (!keyReadable(m_table.referenceAt(refs, i))) return false;
        return true;
    }

    bool keyReadable(std::uint64_t index) {
        // A broken reference: the reader refuses it.
        if (index >= m_table.objectCount()) return true;
        if (--m_budget < 0) return false;
        KeyState& state = m_keyState[index];
        if (state == KeyState::Unchecked)
            state =
                unitsReadable(m_table.offsetOf(index)) ? KeyState::Readable : KeyState::Unreadable;
        return state == KeyState::Readable;
    }

    bool unitsReadable(std::uint64_t at) {
        if (at >= m_table.size() || m_table.typeAt(at) != 0x6) return true;
        std::uint64_t text = 0;
        std::uint64_t units = m_table.countAt(at, text);
        for (std::uint64_t i = 0; i < units && text + 2 * i + 1 < m_table.size(); ++i) {
            if (--m_budget < 0) return false;
            if (m_table.number(text + 2 * i, 2) == 0) return false;
        }
        return true;
    }

    enum class KeyState : std::uint8_t { Unchecked, Readable, Unreadable };

    BinaryTable m_table;
    std::int64_t m_budget = 0;
    std::vector<KeyState> m_keyState;
    std::unordered_set<std::uint64_t> m_dictionaries;
};

} // namespace

bool binaryKeysAreReadable(std::string_view bytes) {
    return !bytes.starts_with("bplist") || BinaryKeys(bytes).readable();
}

} // namespace px::plist
