#pragma once

#include <string_view>

namespace px {

// True when the granted folder `granted` covers `path`: the two are equal, the grant is "/",
// or the path continues the grant with "/". So "/a/b" covers "/a/b/c" but not "/a/bc".
// Both are compared as written; an empty grant covers nothing.
bool grantCovers(std::string_view granted, std::string_view path);

} // namespace px
