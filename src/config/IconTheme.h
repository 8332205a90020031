#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace px {

// The icon for one of the product's image resource names (the "icon" field of menu entries,
// the fallbacks "folder" and "file", file extensions such as "docx"): either a name of the
// freedesktop icon theme ("edit-delete", "x-office-document") or, for resources the theme has
// no sensible icon for (folder-icon pictures, application logos), the absolute path of the
// project's own artwork <data folder>/icons/<name>.svg when that file exists. Nothing when
// neither applies; callers then show no image or fall back to another resource, as "file".
// An absolute path can be told from a theme name by its leading "/".
std::optional<std::string> iconReferenceForResource(std::string_view name);

// The product's data folder (blank documents, icons): the first existing folder of
// $PXMENU_DATADIR, the source tree's data folder, the installed one.
std::optional<std::string> dataDirectory();

} // namespace px
