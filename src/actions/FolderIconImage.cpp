#include "actions/FolderIconImage.h"

#include "actions/FileHash.h"
#include "actions/IconThemeFiles.h"
#include "config/IconTheme.h"
#include "config/PXMenuManager.h"

#include <gdk-pixbuf/gdk-pixbuf.h>
#include <sys/stat.h>

namespace px::foldericon {

namespace {

// Large enough for the biggest icon a file manager draws; scalable theme icons win.
constexpr int kThemeIconSize = 256;

bool isReadableImage(const std::string& path) {
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0 || !S_ISREG(info.st_mode)) return false;
    int width = 0, height = 0;
    return gdk_pixbuf_get_file_info(path.c_str(), &width, &height) != nullptr;
}

std::optional<std::string> userImage(const std::string& iconPath) {
    if (!filehash::isValid(iconPath)) return std::nullopt;
    std::string path =
        iconPath.front() == '/' ? iconPath : PXMenuManager::folderIconFolder() + "/" + iconPath;
    if (!isReadableImage(path)) return std::nullopt;
    return path;
}

// The menu's image without the entry's own file, which `userImage` has already refused.
std::optional<std::string> menuImageFile(const PXMenuItem& item) {
    PXMenuItem named = item;
    named.iconPath.clear();
    std::string reference = named.menuIcon();
    if (reference.empty()) return std::nullopt;
    if (reference.front() == '/')
        return isReadableImage(reference) ? std::optional(reference) : std::nullopt;
    return icontheme::findIconFile({reference}, kThemeIconSize);
}

} // namespace

std::optional<std::string> folderPicture(const std::string& resource) {
    if (!filehash::isValid(resource)) return std::nullopt;
    auto reference = iconReferenceForResource(resource == "foldericon" ? "love" : resource);
    if (!reference || reference->empty() || reference->front() != '/') return std::nullopt;
    return reference;
}

std::optional<std::string> imageFileFor(const PXMenuItem& item) {
    if (auto image = userImage(item.iconPath)) return image;
    if (auto picture = folderPicture(item.icon)) return picture;
    return menuImageFile(item);
}

} // namespace px::foldericon
