#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace px::expand {

// The string a key path is split at when a caller names one. It is a type of its own so that
// a separator is never mistaken for a fallback value: objectAtPath(d, "a/b", Separator("/")).
struct Separator {
    explicit constexpr Separator(std::string_view separatorText) : text(separatorText) {}
    std::string_view text;
};

// A key path split into its components. Without a separator every "." counts as "/" and the
// path is split at "/", so "a.b/c" and "a/b/c" name the same place; with one, the path is split
// at that string only. Empty components (doubled or trailing separators) are kept in `parts`
// and skipped by walkers; a path whose final part is empty ended with a separator.
class KeyPath {
  public:
    explicit KeyPath(std::string_view path);
    KeyPath(std::string_view path, Separator separator);

    const std::vector<std::string>& parts() const { return m_parts; }
    // True when at least one part is not empty.
    bool hasKeys() const;
    bool isFinal(std::size_t index) const { return index + 1 == m_parts.size(); }

  private:
    std::vector<std::string> m_parts;
};

} // namespace px::expand
