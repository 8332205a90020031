#pragma once

#include "config/PXMenuItem.h"
#include "extension/Request.h"

#include <chrono>
#include <cstddef>
#include <string>

namespace px {

// The generated third-level lists of common paths: a path's own submenu (its contents or the
// applications that open it) and its subfolders as copy and move targets. Each reads one
// folder level and stops as soon as its bound is reached; paths on network shares get none.
class PXHelper {
  public:
    // `mainItems` is the main list of the menu being built, whose applications the
    // applications submenu lists.
    PXHelper(const Request& request, const PXMenuItem::List& mainItems)
        : m_request(request), m_mainItems(mainItems) {}

    PXMenuItem::List commomPathNextMenuWithPath(const std::string& path) const;
    PXMenuItem::List commomPathChildFolderItemWithPath(const std::string& path) const;
    static PXMenuItem::List nextTypeSubMenuWithPath(const std::string& path, std::size_t maxCount);
    PXMenuItem::List nextTypeAppMenu() const;

    static constexpr std::size_t kMaxChildFolders = 20;
    // The most entries, and the longest time, one folder listing may take.
    static constexpr std::size_t kMaxListedEntries = 2048;
    static constexpr std::chrono::milliseconds kListingTimeBudget{5};

  private:
    const Request& m_request;
    const PXMenuItem::List& m_mainItems;
};

} // namespace px
