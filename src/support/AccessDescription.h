#pragma once

#include <string>

namespace px {

// One line naming an item, its kind, permission bits, owner and group as a listing shows them:
// "drwxr-x--- root root /srv/x". Owners without a name are shown by number. For a path where
// nothing is, the nearest existing folder above it is described instead; "?" stands in for
// what cannot be read at all.
std::string describeAccess(const std::string& path);

} // namespace px
