#include "actions/BlankDocuments.h"

#include "config/IconTheme.h"
#include "support/FileIO.h"
#include "support/PathName.h"

#include <algorithm>

namespace px::blank {

const std::vector<std::string>& builtInExtensions() {
    static const std::vector<std::string> extensions{"dps",   "et",  "html", "key",  "numbers",
                                                     "pages", "rtf", "wps",  "xlsx", "xml"};
    return extensions;
}

bool isBuiltIn(std::string_view ext) {
    const std::string lower = path::lowercased(ext);
    const auto& known = builtInExtensions();
    return std::find(known.begin(), known.end(), lower) != known.end();
}

std::optional<std::string> documentPath(std::string_view ext) {
    if (!isBuiltIn(ext)) return std::nullopt;
    auto data = dataDirectory();
    if (!data) return std::nullopt;
    std::string document = *data + "/templates/Untitled." + path::lowercased(ext);
    if (!io::exists(document)) return std::nullopt;
    return document;
}

} // namespace px::blank
