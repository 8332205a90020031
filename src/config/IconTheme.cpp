#include "config/IconTheme.h"

#include "support/FileIO.h"
#include "support/FileStamp.h"
#include "support/InstalledFolder.h"
#include "support/ReadScope.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <map>
#include <mutex>
#include <sys/stat.h>
#include <unordered_map>
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

// Both tables by resource name; a name in both keeps its action icon. A menu looks up the
// icon of every entry it shows.
const std::unordered_map<std::string_view, std::string_view>& themeNames() {
    static const auto* names = [] {
        auto* map = new std::unordered_map<std::string_view, std::string_view>();
        for (const auto& [name, theme] : kActionIcons)
            map->emplace(name, theme);
        for (const auto& [name, theme] : kExtensionIcons)
            map->emplace(name, theme);
        return map;
    }();
    return *names;
}

bool isDirectory(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::vector<std::string> dataFolders() {
    std::vector<std::string> folders;
    if (const char* custom = std::getenv("PXMENU_DATADIR"); custom && *custom)
        folders.emplace_back(custom);
    folders.push_back(installedFolder("share/pxmenu"));
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

std::optional<std::string> findArtwork(const std::vector<std::string>& iconFolders,
                                       std::string_view name) {
    for (const auto& folder : iconFolders) {
        std::string path = folder + "/" + std::string(name) + ".svg";
        if (io::exists(path)) return path;
    }
    return std::nullopt;
}

std::vector<std::string> iconFolders() {
    std::vector<std::string> folders = dataFolders();
    for (auto& folder : folders)
        folder += "/icons";
    return folders;
}

// What the icon folders held when they were last looked at, found or not found, so that a
// menu need not look for the same missing pictures every time it is built. The folders'
// stamps are checked once per read scope; any change to a folder forgets everything, and so
// does every check while a folder's last change is too recent to be told from the next one.
class ArtworkCache {
  public:
    std::optional<std::string> find(std::string_view name) {
        std::lock_guard guard(m_mutex);
        if (!ReadScope::holds(m_checkedInScope)) checkFolders();
        auto known = m_found.find(name);
        if (known != m_found.end()) return known->second;
        auto found = findArtwork(m_folders, name);
        if (m_found.size() >= kMostNames) m_found.clear();
        m_found.emplace(std::string(name), found);
        return found;
    }

  private:
    static constexpr std::size_t kMostNames = 1000;

    void checkFolders() {
        m_checkedInScope = ReadScope::current();
        const long long now = io::FileStamp::nowNanos();
        std::vector<std::string> folders = iconFolders();
        std::vector<io::FileStamp> stamps;
        for (const auto& folder : folders)
            stamps.push_back(io::FileStamp::of(folder));
        if (m_settled && folders == m_folders && stamps == m_stamps) return;
        m_settled = std::all_of(stamps.begin(), stamps.end(), [now](const io::FileStamp& stamp) {
            return stamp.isSettledAt(now);
        });
        m_folders = std::move(folders);
        m_stamps = std::move(stamps);
        m_found.clear();
    }

    std::mutex m_mutex;
    std::uint64_t m_checkedInScope = 0;
    bool m_settled = false;
    std::vector<std::string> m_folders;
    std::vector<io::FileStamp> m_stamps;
    std::map<std::string, std::optional<std::string>, std::less<>> m_found;
};

// Outside a read scope every look-up goes to the disk.
std::optional<std::string> artworkFor(std::string_view name) {
    if (!isPlainName(name)) return std::nullopt;
    if (ReadScope::current() == 0) return findArtwork(iconFolders(), name);
    static ArtworkCache* cache = new ArtworkCache();
    return cache->find(name);
}

} // namespace

std::optional<std::string> iconReferenceForResource(std::string_view name) {
    const auto& names = themeNames();
    if (auto themed = names.find(name); themed != names.end()) return std::string(themed->second);
    return artworkFor(name);
}

std::optional<std::string> dataDirectory() {
    for (auto& folder : dataFolders())
        if (isDirectory(folder)) return std::move(folder);
    return std::nullopt;
}

} // namespace px
