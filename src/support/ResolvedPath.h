#pragma once

#include <string>

namespace px {

// The path with every symbolic link in it resolved, "." and ".." removed and no trailing
// slash. When the path does not exist (wholly or in part) the longest existing leading part is
// resolved and the missing rest is appended to it as written. An empty path stays empty.
std::string resolveSymbolicLinks(const std::string& path);

} // namespace px
