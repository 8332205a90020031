#include "actions/FolderIconImage.h"

#include "actions/IconThemeFiles.h"
#include "config/IconTheme.h"
#include "config/PXMenuManager.h"
#include "support/FileHash.h"
#include "support/FileIO.h"

#include <filesystem>
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

std::optional<std::string> userImage(const PXMenuManager& store, const std::string& iconPath) {
    if (!filehash::isValid(iconPath)) return std::nullopt;
    std::string path =
        iconPath.front() == '/' ? iconPath : store.folderIconFolder() + "/" + iconPath;
    if (!isReadableImage(path)) return std::nullopt;
    return path;
}

// An icon reference that names a file (theme names have no slash), made absolute so that it
// still names the file when read from another folder.
std::optional<std::string> absoluteFile(const std::string& reference) {
    if (reference.find('/') == std::string::npos) return std::nullopt;
    std::error_code error;
    auto path = std::filesystem::absolute(reference, error).lexically_normal().string();
    if (error || !io::exists(path)) return std::nullopt;
    return path;
}

// The product's folder picture for a resource name, when the data folder has one.
std::optional<std::string> folderPicture(const std::string& resource) {
    if (!filehash::isValid(resource)) return std::nullopt;
    auto reference = iconReferenceForResource(resource == "foldericon" ? "love" : resource);
    return reference ? absoluteFile(*reference) : std::nullopt;
}

// The menu's image without the entry's own file, which `userImage` has already refused.
std::optional<std::string> menuImageFile(const PXMenuItem& item) {
    PXMenuItem named = item;
    named.iconPath.clear();
    const std::string reference = named.menuIcon();
    if (!filehash::isValid(reference)) return std::nullopt;
    if (reference.find('/') == std::string::npos)
        return icontheme::findIconFile({reference}, kThemeIconSize);
    auto file = absoluteFile(reference);
    return file && isReadableImage(*file) ? file : std::nullopt;
}

} // namespace

std::optional<std::string> imageFileFor(const PXMenuManager& store, const PXMenuItem& item) {
    if (auto image = userImage(store, item.iconPath)) return image;
    if (auto picture = folderPicture(item.icon)) return picture;
    return menuImageFile(item);
}

} // namespace px::foldericon
