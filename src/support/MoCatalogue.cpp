#include "support/MoCatalogue.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdint>
#include <glib.h>

namespace px {

namespace {

constexpr std::uint32_t kSignature = 0x950412de;
constexpr std::size_t kHeaderSize = 28;

Error damaged(std::string reason) {
    return Error{"damaged message catalogue: " + std::move(reason), EINVAL};
}

// Reads the 32-bit words of a catalogue in the byte order its signature shows.
class WordReader {
  public:
    explicit WordReader(std::string_view bytes) : m_bytes(bytes) {}

    bool detectByteOrder() {
        if (word(0) == kSignature) return true;
        m_swapped = true;
        return word(0) == kSignature;
    }

    // The caller makes sure that the four bytes at `offset` are inside the file.
    std::uint32_t word(std::size_t offset) const {
        std::uint32_t value = 0;
        for (int i = 0; i < 4; ++i) {
            const auto byte = static_cast<unsigned char>(m_bytes[offset + (m_swapped ? i : 3 - i)]);
            value = (value << 8) | byte;
        }
        return value;
    }

    bool holdsTable(std::uint64_t offset, std::uint64_t count) const {
        return offset + count * 8 <= m_bytes.size();
    }

    // String `index` of the (length, offset) table at `table`, which msgfmt ends with a NUL.
    ErrorOr<std::string_view> string(std::uint64_t table, std::uint32_t index) const {
        const std::uint64_t length = word(table + index * 8ull);
        const std::uint64_t offset = word(table + index * 8ull + 4);
        if (offset + length >= m_bytes.size() || m_bytes[offset + length] != '\0')
            return damaged("a string lies outside the file");
        return m_bytes.substr(offset, length);
    }

  private:
    std::string_view m_bytes;
    bool m_swapped = false;
};

// The first of the NUL-separated forms (plural entries hold several).
std::string_view firstForm(std::string_view text) {
    return text.substr(0, text.find('\0'));
}

bool isUtf8Charset(std::string_view header) {
    const auto at = header.find("charset=");
    if (at == std::string_view::npos) return true;
    auto name = header.substr(at + 8);
    name = name.substr(0, name.find_first_of(" ;\n\t"));
    std::string lower(name);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return lower == "utf-8" || lower == "utf8" || lower == "ascii" || lower == "us-ascii";
}

} // namespace

MoCatalogue::MoCatalogue(std::vector<Entry> entries) : m_entries(std::move(entries)) {}

ErrorOr<MoCatalogue> MoCatalogue::parse(std::string_view bytes) {
    if (bytes.size() < kHeaderSize) return damaged("shorter than a catalogue header");
    WordReader reader(bytes);
    if (!reader.detectByteOrder()) return damaged("no catalogue signature");
    if ((reader.word(4) >> 16) > 1) return damaged("unknown format revision");
    const std::uint32_t count = reader.word(8);
    const std::uint64_t originals = reader.word(12);
    const std::uint64_t translations = reader.word(16);
    if (!reader.holdsTable(originals, count) || !reader.holdsTable(translations, count))
        return damaged("string tables lie outside the file");

    std::vector<Entry> entries;
    entries.reserve(count);
    std::string_view header;
    for (std::uint32_t i = 0; i < count; ++i) {
        const auto msgid = firstForm(TRY(reader.string(originals, i)));
        const auto msgstr = firstForm(TRY(reader.string(translations, i)));
        if (msgid.empty())
            header = msgstr;
        else if (!msgstr.empty() && g_utf8_validate(msgstr.data(), msgstr.size(), nullptr))
            entries.emplace_back(msgid, msgstr);
    }
    if (!isUtf8Charset(header)) return damaged("the catalogue is not in UTF-8");
    std::stable_sort(entries.begin(), entries.end(),
                     [](const Entry& a, const Entry& b) { return a.first < b.first; });
    entries.erase(std::unique(entries.begin(), entries.end(),
                              [](const Entry& a, const Entry& b) { return a.first == b.first; }),
                  entries.end());
    return MoCatalogue(std::move(entries));
}

std::optional<std::string_view> MoCatalogue::find(std::string_view msgid) const {
    const auto it = std::lower_bound(
        m_entries.begin(), m_entries.end(), msgid,
        [](const Entry& entry, std::string_view key) { return entry.first < key; });
    if (it == m_entries.end() || it->first != msgid) return std::nullopt;
    return std::string_view(it->second);
}

} // namespace px
