#pragma once

#include "support/ErrorOr.h"

#include <string>
#include <string_view>

// A folder's ".directory" file, where some file managers read the folder's own icon from the
// "Icon=" key of the "[Desktop Entry]" group. Edits keep every other line and group as they
// stand, replace the file atomically, and remove it once nothing but blank lines remain.
namespace px::directoryfile {

inline constexpr std::string_view kFileName = ".directory";

// The value as a desktop-entry string: backslashes, line breaks and tabs escaped, and a leading
// blank written as "\s", so that any path reads back as itself.
std::string escapedValue(std::string_view value);
// The text with the "[Desktop Entry]" group's icon set to the value: its first "Icon" line
// replaced and any later one dropped, or a line added after the group's header; the group is
// appended when the text has none.
std::string withIcon(std::string_view content, std::string_view value);
// The text without the "Icon" lines of the "[Desktop Entry]" group; the group's header, with
// the blank lines before it, goes too when only blank lines remain in the group.
std::string withoutIcon(std::string_view content);

// Sets the folder's icon. An existing file that cannot be read is left alone and reported.
ErrorOr<void> setIcon(const std::string& folder, std::string_view value);
// Takes the icon away; nothing to do when the folder has no such file or no icon in it.
ErrorOr<void> removeIcon(const std::string& folder);

} // namespace px::directoryfile
