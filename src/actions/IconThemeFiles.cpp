#include "actions/IconThemeFiles.h"

#include "support/FileIO.h"
#include "support/GlibOwners.h"
#include "support/Xdg.h"

#include <algorithm>
#include <cstdlib>
#include <glib.h>
#include <iterator>
#include <memory>
#include <sstream>

namespace px::icontheme {

namespace {

struct KeyFileDeleter {
    void operator()(GKeyFile* file) const { g_key_file_free(file); }
};
using KeyFile = std::unique_ptr<GKeyFile, KeyFileDeleter>;
using OwnedChars = glib::String;

constexpr const char* kExtensions[] = {".png", ".svg", ".xpm"};

// One sized folder of a theme, from its index.theme.
struct SizedFolder {
    std::string name;
    int size = 0, minSize = 0, maxSize = 0, threshold = 2, scale = 1;
    std::string type = "Threshold";

    int distance(int wanted) const {
        if (type == "Fixed") return std::abs(size - wanted);
        int low = type == "Scalable" ? minSize : size - threshold;
        int high = type == "Scalable" ? maxSize : size + threshold;
        if (wanted < low) return low - wanted;
        return wanted > high ? wanted - high : 0;
    }
};

std::vector<std::string> baseFolders() {
    std::vector<std::string> folders{xdg::homeDirectory() + "/.icons", xdg::dataHome() + "/icons"};
    const char* dirs = std::getenv("XDG_DATA_DIRS");
    std::istringstream list(dirs && *dirs ? dirs : "/usr/local/share:/usr/share");
    for (std::string dir; std::getline(list, dir, ':');)
        if (!dir.empty()) folders.push_back(dir + "/icons");
    return folders;
}

KeyFile loadIndex(const std::string& theme) {
    for (const auto& base : baseFolders()) {
        KeyFile file(g_key_file_new());
        std::string index = base + "/" + theme + "/index.theme";
        if (g_key_file_load_from_file(file.get(), index.c_str(), G_KEY_FILE_NONE, nullptr))
            return file;
    }
    return nullptr;
}

// A comma-separated list of an index.theme ("Directories", "Inherits").
std::vector<std::string> listOf(GKeyFile* file, const char* group, const char* key) {
    std::vector<std::string> result;
    OwnedChars value(g_key_file_get_string(file, group, key, nullptr));
    if (!value) return result;
    std::istringstream items(value.get());
    for (std::string item; std::getline(items, item, ',');)
        if (!item.empty()) result.push_back(item);
    return result;
}

int integerOf(GKeyFile* file, const std::string& group, const char* key, int fallback) {
    GError* error = nullptr;
    int value = g_key_file_get_integer(file, group.c_str(), key, &error);
    if (!error) return value;
    g_error_free(error);
    return fallback;
}

std::vector<SizedFolder> sizedFolders(GKeyFile* index) {
    std::vector<SizedFolder> folders;
    for (auto& name : listOf(index, "Icon Theme", "Directories")) {
        SizedFolder folder;
        folder.size = integerOf(index, name, "Size", 0);
        folder.minSize = integerOf(index, name, "MinSize", folder.size);
        folder.maxSize = integerOf(index, name, "MaxSize", folder.size);
        folder.threshold = integerOf(index, name, "Threshold", 2);
        folder.scale = integerOf(index, name, "Scale", 1);
        OwnedChars type(g_key_file_get_string(index, name.c_str(), "Type", nullptr));
        if (type) folder.type = type.get();
        folder.name = std::move(name);
        if (folder.size > 0 && folder.scale == 1) folders.push_back(std::move(folder));
    }
    return folders;
}

// The theme named in the user's GTK settings ("gtk-icon-theme-name"), GTK 4's before GTK 3's.
std::optional<std::string> desktopTheme() {
    for (const char* version : {"gtk-4.0", "gtk-3.0"}) {
        KeyFile file(g_key_file_new());
        std::string ini = xdg::configHome() + "/" + version + "/settings.ini";
        if (!g_key_file_load_from_file(file.get(), ini.c_str(), G_KEY_FILE_NONE, nullptr)) continue;
        OwnedChars name(
            g_key_file_get_string(file.get(), "Settings", "gtk-icon-theme-name", nullptr));
        if (name && *name) return std::string(name.get());
    }
    return std::nullopt;
}

void addTheme(std::vector<std::string>& chain, const std::string& theme, int depth) {
    if (theme.empty() || depth > 8 || std::find(chain.begin(), chain.end(), theme) != chain.end())
        return;
    KeyFile index = loadIndex(theme);
    if (!index) return;
    chain.push_back(theme);
    for (const auto& parent : listOf(index.get(), "Icon Theme", "Inherits"))
        addTheme(chain, parent, depth + 1);
}

// The closest-sized file for `name` in one theme, with its distance from the wanted size.
std::optional<std::pair<int, std::string>> bestInTheme(const std::string& theme,
                                                       const std::vector<SizedFolder>& folders,
                                                       const std::string& name, int size) {
    std::optional<std::pair<int, std::string>> best;
    for (const auto& base : baseFolders())
        for (const auto& folder : folders) {
            const int distance = folder.distance(size);
            if (best && best->first <= distance) continue;
            for (const char* extension : kExtensions) {
                std::string file = base + "/" + theme + "/" + folder.name + "/" + name + extension;
                if (!io::exists(file)) continue;
                best = {distance, file};
                break;
            }
        }
    return best;
}

std::optional<std::string> inPixmaps(const std::vector<std::string>& names) {
    for (const auto& name : names)
        for (const char* extension : kExtensions) {
            std::string file = "/usr/share/pixmaps/" + name + extension;
            if (io::exists(file)) return file;
        }
    return std::nullopt;
}

bool isPlainName(const std::string& name) {
    return !name.empty() && name.find('/') == std::string::npos && name != "." && name != "..";
}

} // namespace

std::vector<std::string> themeChain() {
    std::vector<std::string> chain;
    if (auto theme = desktopTheme()) addTheme(chain, *theme, 0);
    addTheme(chain, "Adwaita", 0);
    addTheme(chain, "hicolor", 0);
    return chain;
}

std::optional<std::string> findIconFile(const std::vector<std::string>& names, int size) {
    std::vector<std::string> usable;
    std::copy_if(names.begin(), names.end(), std::back_inserter(usable), isPlainName);
    for (const auto& theme : themeChain()) {
        KeyFile index = loadIndex(theme);
        if (!index) continue;
        const auto folders = sizedFolders(index.get());
        for (const auto& name : usable)
            if (auto found = bestInTheme(theme, folders, name, size)) return found->second;
    }
    return inPixmaps(usable);
}

} // namespace px::icontheme
