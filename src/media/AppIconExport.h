#pragma once

#include <optional>
#include <string>
#include <vips/vips8>

// App icon sets from one square image: the macOS .icns file and the macOS, iOS, watch and
// Android icon-set folders with their Contents.json catalogues.
namespace px::media {

enum class IconExportStatus { Written, NotSquare };

// Exports source for type -1 (AppIcon.icns), 0 (macOS set), 1 (iOS), 2 (watch) or any other
// value (Android). basePath is the source path without its extension. Returns NotSquare, and
// writes nothing, when the image's width differs from its height; the caller shows the alert.
IconExportStatus createIconToPath(const vips::VImage& source, const std::string& basePath,
                                  int type);

struct AppIconFolders {
    std::string setFolder;        // "/pics/logo(iOS)", or "/pics/logo(iOS)-1" when that exists
    std::string appIconSetFolder; // setFolder + "/AppIcon.appiconset"
};

// Makes the folders of a set for type 0 "(OSX)", 1 "(iOS)", 2 "(iWatch)" or 3 "(Android)"
// beside basePath; the set folder is given a free name. Empty when they cannot be made.
std::optional<AppIconFolders> getFolderPath(const std::string& basePath, int type);

} // namespace px::media
