#include "plist/PlistDepth.h"

#include "plist/PlistBinaryTable.h"

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

// Measures how deep the containers of the object table nest, from the top object down.
class BinaryWalk {
  public:
    explicit BinaryWalk(std::string_view bytes) : m_table(bytes) {}

    bool nestsWithin(int maxDepth) {
        if (!m_table.plausible()) return true;
        m_height.assign(m_table.objectCount(), kUnseen);
        // Counted in containers, the root one included; the reader itself draws the exact line.
        return height(m_table.topObject(), maxDepth + 1) <= maxDepth + 1;
    }

  private:
    static constexpr int kUnseen = -1, kOnPath = -2, kTooDeep = 1 << 30;

    // The number of container levels below an object, or kTooDeep once past `budget`.
    int height(std::uint64_t index, int budget) {
        if (index >= m_table.objectCount()) return 0; // a broken reference: the reader refuses it
        int& known = m_height[index];
        if (known >= 0) return known;
        if (known == kOnPath || budget < 0) return kTooDeep;
        known = kOnPath;
        int below = childrenHeight(m_table.offsetOf(index), budget);
        known = below >= kTooDeep ? kTooDeep : below;
        return known;
    }

    int childrenHeight(std::uint64_t at, int budget) {
        if (at >= m_table.size()) return 0;
        bool array = m_table.typeAt(at) == 0xA, dict = m_table.typeAt(at) == 0xD;
        if (!array && !dict) return 0;
        std::uint64_t refs = 0;
        std::uint64_t count = m_table.countAt(at, refs);
        std::uint64_t total = dict ? count * 2 : count;
        if (total > m_table.size()) return 0;
        int highest = 0;
        for (std::uint64_t i = 0; i < total && highest < kTooDeep; ++i)
            highest = std::max(highest, height(m_table.referenceAt(refs, i), budget - 1));
        return highest >= kTooDeep ? kTooDeep : highest + 1;
    }

    BinaryTable m_table;
    std::vector<int> m_height;
};

} // namespace

bool nestsWithin(std::string_view bytes, int maxDepth) {
    if (bytes.starts_with("bplist")) return BinaryWalk(bytes).nestsWithin(maxDepth);
    return xmlNestsWithin(bytes, maxDepth);
}

} // namespace px::plist
