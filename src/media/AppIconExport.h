#pragma once

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

} // namespace px::media
