#pragma once

#include "support/ErrorOr.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace px {

// The translations of one compiled GNU message catalogue (the binary .mo format that msgfmt
// writes). Parsing checks every table and string against the size of the file, so a truncated
// or damaged file is refused with a reason instead of being read out of bounds. Only UTF-8
// catalogues are accepted; an entry whose translation is not valid UTF-8 is left out.
class MoCatalogue {
  public:
    static ErrorOr<MoCatalogue> parse(std::string_view bytes);

    // The translation of `msgid`, or nothing when the catalogue has none. For an entry with
    // plural forms the singular translation is given.
    std::optional<std::string_view> find(std::string_view msgid) const;
    std::size_t size() const { return m_entries.size(); }

  private:
    using Entry = std::pair<std::string, std::string>;
    explicit MoCatalogue(std::vector<Entry> entries);

    std::vector<Entry> m_entries; // sorted by msgid
};

} // namespace px
