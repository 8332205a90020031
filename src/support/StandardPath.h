#pragma once

#include <string>
#include <string_view>

namespace px {

// A path in standard form: a leading "~" expanded to the home folder, "." and ".." components
// resolved, doubled and trailing separators removed. Purely textual: links are not followed.
std::string standardizePath(std::string_view path);

} // namespace px
