#pragma once

#include "config/PXMenuItem.h"

#include <chrono>
#include <cstddef>
#include <string>

namespace px {

// The generated third-level lists of common paths: a path's own submenu (its contents or the
// applications that open it) and its subfolders as copy and move targets. Each reads one
// folder level and stops as soon as its bound is reached; paths on network shares get none.
class PXHelper {
  public:
    static PXMenuItem::List commomPathNextMenuWithPath(const std::string& path);
    static PXMenuItem::List commomPathChildFolderItemWithPath(const std::string& path);
    static PXMenuItem::List _nextTypeSubMenuWithPath(const std::string& path, std::size_t maxCount);
    static PXMenuItem::List _nextTypeAppMenu();

    static constexpr std::size_t kMaxChildFolders = 20;
    // The most entries, and the longest time, one folder listing may take.
    static constexpr std::size_t kMaxListedEntries = 2048;
    static constexpr std::chrono::milliseconds kListingTimeBudget{5};
};

} // namespace px
