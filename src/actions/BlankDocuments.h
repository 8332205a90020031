#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The blank documents the product ships for "New File": data/templates/Untitled.<ext>.
namespace px::blank {

// The ten extensions with a shipped blank document: "dps", "et", "html", "key", "numbers",
// "pages", "rtf", "wps", "xlsx", "xml". Any other extension is made as an empty file.
const std::vector<std::string>& builtInExtensions();
// Compared without regard to case ("XLSX" is one).
bool isBuiltIn(std::string_view ext);
// The shipped blank document for the extension; nothing for other extensions, or when the
// data folder or the document is missing.
std::optional<std::string> documentPath(std::string_view ext);

} // namespace px::blank
