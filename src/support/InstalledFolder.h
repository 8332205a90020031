#pragma once

#include <string>
#include <string_view>

namespace px {

// "<prefix>/<relative>" for a program running as "<prefix>/bin/<name>", or for a library loaded
// into such a program: where an installed program finds its own files, wherever its prefix (a
// package unpacked into any folder works as it does under /usr). Empty when the program's path
// is unknown.
std::string installedFolder(std::string_view relative);

} // namespace px
