// Exports one app icon set from an image file, for timing against other tools:
// iconset_tool SOURCE TYPE (TYPE -1 .icns, 0 macOS, 1 iOS, 2 watch, 3 Android). The set goes
// beside SOURCE, as the menu's Convert to would put it.
#include "media/AppIconExport.h"
#include "media/ImageFile.h"

#include <cstdio>
#include <cstdlib>
#include <string>

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s SOURCE TYPE\n", argv[0]);
        return 2;
    }
    const std::string source = argv[1];
    auto image = px::media::loadImage(source);
    if (!image) {
        std::fprintf(stderr, "%s: cannot read the image\n", source.c_str());
        return 1;
    }
    const std::string base = source.substr(0, source.rfind('.'));
    auto status = px::media::createIconToPath(*image, base, std::atoi(argv[2]));
    if (status == px::media::IconExportStatus::NotSquare) {
        std::fprintf(stderr, "%s: the image is not square\n", source.c_str());
        return 1;
    }
    return 0;
}
