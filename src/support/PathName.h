#pragma once

#include <string>
#include <string_view>

// The parts of a POSIX path held as a string: last component, parent, extension. Pure string
// work; nothing here touches the file system.
//
// Trailing slashes are ignored ("/a/b/" is "/a/b"). An extension is the text after the last
// "." of the last component, provided that dot is not the component's first character and the
// text is neither empty nor contains white space: "a.tar.gz" has "gz", ".bashrc" has none,
// "notes.v1 draft" has none.
namespace px::path {

std::string lastPathComponent(std::string_view path);
// "/a/b" gives "/a", "/a" gives "/", "a" gives "".
std::string deletingLastPathComponent(std::string_view path);
std::string pathExtension(std::string_view path);
// The path without "." and its extension; unchanged when there is none.
std::string deletingPathExtension(std::string_view path);
// Joins with exactly one "/" between the two.
std::string appendingPathComponent(std::string_view path, std::string_view component);
// Lower-cases UTF-8 text ("PDF" gives "pdf", "ÄB" gives "äb").
std::string lowercased(std::string_view text);

} // namespace px::path
