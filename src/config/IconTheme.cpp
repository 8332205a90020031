#include "config/IconTheme.h"

#include "support/FileIO.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <sys/stat.h>
#include <utility>
#include <vector>

namespace px {

namespace {

using ThemeName = std::pair<std::string_view, std::string_view>;

// Resource names of the menus and the generated entries, with their freedesktop theme names.
constexpr std::array kActionIcons = std::to_array<ThemeName>({
    {"about", "help-about"},
    {"add", "list-add"},
    {"app", "applications-other"},
    {"choose", "folder-open"},
    {"colorpicker", "color-select"},
    {"compress", "package-x-generic"},
    {"convert", "image-x-generic"},
    {"copy", "edit-copy"},
    {"copypath", "edit-copy"},
    {"cut", "edit-cut"},
    {"delete", "edit-delete"},
    {"embed", "folder-new"},
    {"favorites", "user-bookmarks"},
    {"file", "text-x-generic"},
    {"fileinfo", "document-properties"},
    {"folder", "folder"},
    {"foldericon", "folder-pictures"},
    {"hidefile", "view-conceal"},
    {"icon", "text-x-generic"},
    {"img", "insert-image"},
    {"iterm2", "utilities-terminal"},
    {"lock", "changes-prevent"},
    {"more", "view-more"},
    {"move", "go-jump"},
    {"newfile", "document-new"},
    {"paste", "edit-paste"},
    {"recover", "document-revert"},
    {"script", "text-x-script"},
    {"set", "preferences-system"},
    {"showfile", "view-reveal"},
    {"showfinder", "system-file-manager"},
    {"terminal", "utilities-terminal"},
    {"unembed", "folder-open"},
    {"unlock", "changes-allow"},
});

// File extensions used as resource names, with the generic MIME-type icon of their kind.
// ("java" is left out: it names the Java folder-icon picture.)
constexpr std::array kExtensionIcons = std::to_array<ThemeName>({
    {"txt", "text-x-generic"},
    {"md", "text-x-generic"},
    {"json", "text-x-generic"},
    {"log", "text-x-generic"},
    {"csv", "x-office-spreadsheet"},
    {"xml", "text-html"},
    {"html", "text-html"},
    {"htm", "text-html"},
    {"css", "text-x-script"},
    {"js", "text-x-script"},
    {"ts", "text-x-script"},
    {"py", "text-x-script"},
    {"sh", "text-x-script"},
    {"rb", "text-x-script"},
    {"pl", "text-x-script"},
    {"php", "text-x-script"},
    {"c", "text-x-script"},
    {"cpp", "text-x-script"},
    {"h", "text-x-script"},
    {"go", "text-x-script"},
    {"rs", "text-x-script"},
    {"scpt", "text-x-script"},
    {"rtf", "x-office-document"},
    {"doc", "x-office-document"},
    {"docx", "x-office-document"},
    {"odt", "x-office-document"},
    {"pages", "x-office-document"},
    {"wps", "x-office-document"},
    {"pdf", "x-office-document"},
    {"epub", "x-office-document"},
    {"xls", "x-office-spreadsheet"},
    {"xlsx", "x-office-spreadsheet"},
    {"ods", "x-office-spreadsheet"},
    {"numbers", "x-office-spreadsheet"},
    {"et", "x-office-spreadsheet"},
    {"ppt", "x-office-presentation"},
    {"pptx", "x-office-presentation"},
    {"odp", "x-office-presentation"},
    {"key", "x-office-presentation"},
    {"dps", "x-office-presentation"},
    {"png", "image-x-generic"},
    {"jpg", "image-x-generic"},
    {"jpeg", "image-x-generic"},
    {"jpe", "image-x-generic"},
    {"jfif", "image-x-generic"},
    {"jp2", "image-x-generic"},
    {"gif", "image-x-generic"},
    {"bmp", "image-x-generic"},
    {"tif", "image-x-generic"},
    {"tiff", "image-x-generic"},
    {"webp", "image-x-generic"},
    {"svg", "image-x-generic"},
    {"ico", "image-x-generic"},
    {"icns", "image-x-generic"},
    {"heic", "image-x-generic"},
    {"odg", "x-office-drawing"},
    {"mp3", "audio-x-generic"},
    {"wav", "audio-x-generic"},
    {"flac", "audio-x-generic"},
    {"ogg", "audio-x-generic"},
    {"m4a", "audio-x-generic"},
    {"aac", "audio-x-generic"},
    {"mp4", "video-x-generic"},
    {"mkv", "video-x-generic"},
    {"mov", "video-x-generic"},
    {"avi", "video-x-generic"},
    {"webm", "video-x-generic"},
    {"zip", "package-x-generic"},
    {"tar", "package-x-generic"},
    {"gz", "package-x-generic"},
    {"tgz", "package-x-generic"},
    {"bz2", "package-x-generic"},
    {"xz", "package-x-generic"},
    {"7z", "package-x-generic"},
    {"rar", "package-x-generic"},
    {"deb", "package-x-generic"},
    {"ttf", "font-x-generic"},
    {"otf", "font-x-generic"},
    {"woff", "font-x-generic"},
    {"exe", "application-x-executable"},
    {"appimage", "application-x-executable"},
});

template <std::size_t N>
std::optional<std::string_view> lookUp(const std::array<ThemeName, N>& table,
                                       std::string_view name) {
    const auto found = std::find_if(table.begin(), table.end(),
                                    [name](const ThemeName& entry) { return entry.first == name; });
    if (found == table.end()) return std::nullopt;
    return found->second;
}

bool isDirectory(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::vector<std::string> dataFolders() {
    std::vector<std::string> folders;
    if (const char* custom = std::getenv("PXMENU_DATADIR"); custom && *custom)
        folders.emplace_back(custom);
    folders.emplace_back(PX_BUILD_DATADIR);
    folders.emplace_back(PX_INSTALL_DATADIR);
    return folders;
}

// A resource name that can be used as a file name inside the icons folder and nowhere else.
bool isPlainName(std::string_view name) {
    if (name.empty() || name.front() == '.') return false;
    return std::all_of(name.begin(), name.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               c == '-' || c == '_' || c == '.' || c == '+';
    });
}

std::optional<std::string> artworkFor(std::string_view name) {
    if (!isPlainName(name)) return std::nullopt;
    for (const auto& folder : dataFolders()) {
        std::string path = folder + "/icons/" + std::string(name) + ".svg";
        if (io::exists(path)) return path;
    }
    return std::nullopt;
}

} // namespace

std::optional<std::string> iconReferenceForResource(std::string_view name) {
    if (auto themed = lookUp(kActionIcons, name)) return std::string(*themed);
    if (auto themed = lookUp(kExtensionIcons, name)) return std::string(*themed);
    return artworkFor(name);
}

std::optional<std::string> dataDirectory() {
    for (auto& folder : dataFolders())
        if (isDirectory(folder)) return std::move(folder);
    return std::nullopt;
}

} // namespace px
