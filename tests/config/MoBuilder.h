#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace px::test {

// Writes a compiled message catalogue in the GNU .mo layout, as msgfmt does: header, table of
// originals, table of translations, no hash table, then the NUL-terminated strings.
inline std::string buildMoCatalogue(const std::vector<std::pair<std::string, std::string>>& entries,
                                    bool bigEndian = false) {
    std::string bytes;
    auto put = [&](std::uint32_t value) {
        for (int i = 0; i < 4; ++i) {
            const int shift = bigEndian ? 8 * (3 - i) : 8 * i;
            bytes.push_back(static_cast<char>((value >> shift) & 0xff));
        }
    };
    const auto count = static_cast<std::uint32_t>(entries.size());
    const std::uint32_t originals = 28, translations = originals + 8 * count;
    std::uint32_t next = translations + 8 * count;
    for (std::uint32_t word : {0x950412deu, 0u, count, originals, translations, 0u, next})
        put(word);
    std::string strings;
    auto table = [&](bool translated) {
        for (const auto& [msgid, msgstr] : entries) {
            const std::string& text = translated ? msgstr : msgid;
            put(static_cast<std::uint32_t>(text.size()));
            put(next);
            next += static_cast<std::uint32_t>(text.size()) + 1;
            strings.append(text).push_back('\0');
        }
    };
    table(false);
    table(true);
    return bytes + strings;
}

inline const std::string kUtf8Header = "Content-Type: text/plain; charset=UTF-8\n";

} // namespace px::test
