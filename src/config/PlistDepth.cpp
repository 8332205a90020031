#include "config/PlistDepth.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace px::plist {

namespace {

bool startsWith(std::string_view text, std::size_t at, std::string_view prefix) {
    return text.substr(at, prefix.size()) == prefix;
}

// The change of depth for the markup starting at `at` (just after '<'), and where it ends.
int xmlTagStep(std::string_view xml, std::size_t at, std::size_t& end) {
    auto skipTo = [&](std::string_view closer) {
        std::size_t found = xml.find(closer, at);
        end = found == std::string_view::npos ? xml.size() : found + closer.size();
    };
    bool comment = startsWith(xml, at, "!--"), text = startsWith(xml, at, "![CDATA[");
    skipTo(comment ? "-->" : text ? "]]>" : ">");
    if (comment || text) return 0;
    std::string_view tag = xml.substr(at, end - at);
    bool closing = startsWith(tag, 0, "/");
    std::string_view name = tag.substr(closing ? 1 : 0);
    bool container = startsWith(name, 0, "array") || startsWith(name, 0, "dict");
    if (!container) return 0;
    if (closing) return -1;
    return tag.size() >= 2 && tag[tag.size() - 2] == '/' ? 0 : 1;
}

bool xmlNestsWithin(std::string_view xml, int maxDepth) {
    int depth = 0;
    for (std::size_t at = xml.find('<'); at != std::string_view::npos; at = xml.find('<', at)) {
        std::size_t end = 0;
        depth += xmlTagStep(xml, at + 1, end);
        if (depth > maxDepth + 1) return false; // the root container itself is one level
        at = end;
    }
    return true;
}

// A binary property list: a header, objects, a table of their offsets and a 32-byte trailer.
class BinaryWalk {
  public:
    explicit BinaryWalk(std::string_view bytes) : m_bytes(bytes) {}

    bool nestsWithin(int maxDepth) {
        if (m_bytes.size() < 8 + 32) return true;
        std::size_t trailer = m_bytes.size() - 32;
        m_offsetSize = byteAt(trailer + 6);
        m_refSize = byteAt(trailer + 7);
        m_count = number(trailer + 8, 8);
        m_table = number(trailer + 24, 8);
        if (!plausible()) return true;
        m_height.assign(m_count, kUnseen);
        // Counted in containers, the root one included; the reader itself draws the exact line.
        return height(number(trailer + 16, 8), maxDepth + 1) <= maxDepth + 1;
    }

  private:
    static constexpr int kUnseen = -1, kOnPath = -2, kTooDeep = 1 << 30;

    std::uint8_t byteAt(std::size_t at) const { return static_cast<std::uint8_t>(m_bytes[at]); }

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

    // The number of container levels below an object, or kTooDeep once past `budget`.
    int height(std::uint64_t index, int budget) {
        if (index >= m_count) return 0; // a broken reference: the reader refuses it
        int& known = m_height[index];
        if (known >= 0) return known;
        if (known == kOnPath || budget < 0) return kTooDeep;
        known = kOnPath;
        int below = childrenHeight(number(m_table + index * m_offsetSize, m_offsetSize), budget);
        known = below >= kTooDeep ? kTooDeep : below;
        return known;
    }

    int childrenHeight(std::uint64_t at, int budget) {
        if (at >= m_bytes.size()) return 0;
        std::uint8_t marker = byteAt(at);
        bool array = (marker >> 4) == 0xA, dict = (marker >> 4) == 0xD;
        if (!array && !dict) return 0;
        std::uint64_t count = marker & 0xF;
        std::uint64_t refs = at + 1;
        if (count == 0xF && refs < m_bytes.size()) {
            std::size_t size = std::size_t{1} << (byteAt(refs) & 0x3);
            count = number(refs + 1, size);
            refs += 1 + size;
        }
        std::uint64_t total = dict ? count * 2 : count;
        if (total > m_bytes.size()) return 0;
        int highest = 0;
        for (std::uint64_t i = 0; i < total && highest < kTooDeep; ++i)
            highest =
                std::max(highest, height(number(refs + i * m_refSize, m_refSize), budget - 1));
        return highest >= kTooDeep ? kTooDeep : highest + 1;
    }

    std::string_view m_bytes;
    std::size_t m_offsetSize = 0, m_refSize = 0;
    std::uint64_t m_count = 0, m_table = 0;
    std::vector<int> m_height;
};

} // namespace

bool nestsWithin(std::string_view bytes, int maxDepth) {
    if (bytes.starts_with("bplist")) return BinaryWalk(bytes).nestsWithin(maxDepth);
    return xmlNestsWithin(bytes, maxDepth);
}

} // namespace px::plist
