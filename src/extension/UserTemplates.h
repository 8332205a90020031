#pragma once

#include "config/PXMenuItem.h"

#include <cstddef>
#include <string>

namespace px {

// The files of the user's templates folder (XDG "TEMPLATES", usually ~/Templates), offered in
// "New File" after the configured templates as the desktop's file managers offer them.
class UserTemplates {
  public:
    static constexpr std::size_t kMaxItems = 50;
    // Entries read from the folder at most; a larger folder is offered in part.
    static constexpr std::size_t kMaxScanned = 2000;

    // The current user's templates folder; empty when it is the home folder itself (the
    // user-dirs way of switching templates off).
    static std::string folder();

    // One entry per visible regular file of the folder (symbolic links to files included),
    // sorted by name, at most kMaxItems: key = the file's name, ext = its extension,
    // templatePath = its path, displayName and fileName = its name without the extension.
    // Names that are keys of special entries ("New File From Window", ...) are left out.
    static PXMenuItem::List items(const std::string& folder);
    static PXMenuItem::List items() { return items(folder()); }
};

} // namespace px
