#include "actions/FileIcon.h"

#include "actions/IconThemeFiles.h"
#include "actions/PixbufImage.h"
#include "support/GioFileInfo.h"
#include "support/GlibOwners.h"

#include <gdk-pixbuf/gdk-pixbuf.h>
#include <glib.h>
#include <memory>
#include <optional>
#include <sys/stat.h>
#include <vector>

namespace px::fileicon {

namespace {

// Larger pictures are not decoded just to draw a small icon.
constexpr long long kMaxImagePixels = 64LL * 1024 * 1024;

bool isRegularFile(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

std::optional<std::string> customIconFile(const std::string& itemPath) {
    auto icon = gio::metadataString(itemPath, "metadata::custom-icon");
    if (!icon) return std::nullopt;
    glib::String file(g_filename_from_uri(icon->c_str(), nullptr, nullptr));
    std::string path = file ? std::string(file.get()) : *icon;
    if (path.empty() || path.front() != '/' || !isRegularFile(path)) return std::nullopt;
    return path;
}

bool isDrawableImage(const std::string& itemPath, const std::string& contentType) {
    if (!gio::isImageContentType(contentType) || !isRegularFile(itemPath)) return false;
    int width = 0, height = 0;
    if (!gdk_pixbuf_get_file_info(itemPath.c_str(), &width, &height)) return false;
    return width > 0 && height > 0 && static_cast<long long>(width) * height <= kMaxImagePixels;
}

std::vector<std::string> themeNames(const std::string& contentType) {
    std::vector<std::string> names = gio::themedIconNames(contentType);
    if (contentType == "inode/directory") names.insert(names.begin(), "folder");
    names.emplace_back("application-x-generic");
    names.emplace_back("text-x-generic");
    return names;
}

} // namespace

bool saveIconPNG(const std::string& itemPath, const std::string& pngPath, int size) {
    if (auto custom = customIconFile(itemPath))
        if (pixbuf::renderSquarePNG(*custom, pngPath, size)) return true;
    const std::string type = gio::contentTypeOfPath(itemPath).value_or("application/octet-stream");
    if (isDrawableImage(itemPath, type) && pixbuf::renderSquarePNG(itemPath, pngPath, size))
        return true;
    auto iconFile = icontheme::findIconFile(themeNames(type), size);
    return iconFile && pixbuf::renderSquarePNG(*iconFile, pngPath, size);
}

} // namespace px::fileicon
