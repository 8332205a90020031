#include "IconTestSupport.h"

#include "media/ImageFile.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

namespace px::test {

vips::VImage gradientImage(int width, int height) {
    media::ensureVipsStarted();
    vips::VImage xy = vips::VImage::xyz(width, height);
    vips::VImage red = xy[0] * (255.0 / std::max(1, width - 1));
    vips::VImage green = xy[1] * (255.0 / std::max(1, height - 1));
    vips::VImage blue = (red + green) / 2;
    vips::VImage alpha = (red * 0) + 255;
    return vips::VImage::bandjoin({red, green, blue, alpha})
        .cast(VIPS_FORMAT_UCHAR)
        .copy(vips::VImage::option()->set("interpretation", VIPS_INTERPRETATION_sRGB));
}

void writePng(const vips::VImage& image, const std::string& path) {
    image.pngsave(path.c_str());
}

std::pair<int, int> identifySize(const std::string& path) {
    auto result = runProcess({"/usr/bin/identify", "-format", "%w %h", path});
    if (result.exitStatus != 0) throw std::runtime_error("identify failed: " + result.err);
    std::istringstream in(result.out);
    std::pair<int, int> size{-1, -1};
    in >> size.first >> size.second;
    return size;
}

std::vector<std::string> pillowIcnsSizes(const std::string& path) {
    // Every listed size is decoded, and its real pixel size printed.
    static const char* script = "import sys\n"
                                "from PIL import Image\n"
                                "im = Image.open(sys.argv[1])\n"
                                "assert im.format == 'ICNS', im.format\n"
                                "for size in im.info['sizes']:\n"
                                "    one = Image.open(sys.argv[1])\n"
                                "    one.size = size\n"
                                "    one.load()\n"
                                "    print('%dx%d' % one.size)\n";
    auto result = runProcess({"/usr/bin/python3", "-c", script, path});
    if (result.exitStatus != 0) return {"error: " + result.err};
    std::vector<std::string> sizes;
    std::istringstream in(result.out);
    for (std::string line; std::getline(in, line);)
        sizes.push_back(line);
    std::sort(sizes.begin(), sizes.end());
    return sizes;
}

} // namespace px::test
