#pragma once

#include <optional>
#include <string>
#include <vector>

// What GIO knows about a file: its content type, the icon-theme name for a type, and the
// desktop's metadata attributes. Everything answers "nothing" rather than failing.
namespace px::gio {

// The content type of the item at `path` (symbolic links followed): "inode/directory" for a
// folder, else a guess from the name, refined by the first bytes of a regular file when the
// name alone is not conclusive. Nothing when the item cannot be looked up.
std::optional<std::string> contentTypeOfPath(const std::string& path);
bool isImageContentType(const std::string& contentType);
// The first freedesktop icon-theme name GIO gives for the content type, or nothing.
std::optional<std::string> themedIconName(const std::string& contentType);
// Every icon-theme name GIO gives for the content type, most specific first (symbolic ones
// included, as GIO lists them); empty when it gives none.
std::vector<std::string> themedIconNames(const std::string& contentType);
// A string metadata attribute ("metadata::custom-icon") of the item, when set and not empty.
// Without a metadata store (no session bus, no GVfs) the answer is nothing.
std::optional<std::string> metadataString(const std::string& path, const std::string& attribute);

} // namespace px::gio
