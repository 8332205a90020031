#pragma once

#include "media/AppIconTables.h"

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

// The "Contents.json" catalogue of an AppIcon.appiconset folder, derived from the file names.
namespace px::media {

// The catalogue entry of one file, from its name alone: "<prefix>_<size>[@<scale>].png".
// Empty for a hidden file, a name that is not a PNG file's, or a name without exactly one "_".
std::optional<nlohmann::ordered_json> catalogueImage(const std::string& fileName, AppIconSet set);

// Writes the catalogue of the folder's PNG files, in the order the folder lists them, to
// "<folder>/Contents.json". False when the file could not be written.
bool createConfigJsonToPath(const std::string& appIconSetFolder, AppIconSet set);

} // namespace px::media
