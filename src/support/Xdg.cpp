#include "support/Xdg.h"

#include "support/FileIO.h"

#include <cstdlib>
#include <pwd.h>
#include <sstream>
#include <unistd.h>

namespace px::xdg {

namespace {

std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

std::string absoluteOr(const char* variable, const std::string& fallback) {
    std::string value = environment(variable);
    return !value.empty() && value.front() == '/' ? value : fallback;
}

std::string fallbackUserDirectory(std::string_view name) {
    if (name == "DESKTOP") return "Desktop";
    if (name == "DOCUMENTS") return "Documents";
    if (name == "DOWNLOAD") return "Downloads";
    if (name == "MUSIC") return "Music";
    if (name == "PICTURES") return "Pictures";
    if (name == "VIDEOS") return "Videos";
    if (name == "TEMPLATES") return "Templates";
    if (name == "PUBLICSHARE") return "Public";
    return std::string(name);
}

// Parses one line of user-dirs.dirs: XDG_NAME_DIR="$HOME/Folder".
std::string valueOfLine(const std::string& line, const std::string& variable) {
    if (line.rfind(variable + "=", 0) != 0) return {};
    std::string value = line.substr(variable.size() + 1);
    if (value.size() >= 2 && value.front() == '"' && value.back() == '"')
        value = value.substr(1, value.size() - 2);
    if (value.rfind("$HOME", 0) == 0) value = homeDirectory() + value.substr(5);
    return value.empty() || value.front() != '/' ? std::string{} : value;
}

} // namespace

std::string homeDirectory() {
    std::string home = environment("HOME");
    if (!home.empty()) return home;
    const passwd* entry = ::getpwuid(::getuid());
    return entry && entry->pw_dir ? entry->pw_dir : "/";
}

std::string loginName() {
    const passwd* entry = ::getpwuid(::getuid());
    if (entry && entry->pw_name) return entry->pw_name;
    return environment("USER");
}

std::string configHome() {
    return absoluteOr("XDG_CONFIG_HOME", homeDirectory() + "/.config");
}
std::string dataHome() {
    return absoluteOr("XDG_DATA_HOME", homeDirectory() + "/.local/share");
}
std::string cacheHome() {
    return absoluteOr("XDG_CACHE_HOME", homeDirectory() + "/.cache");
}

std::string runtimeDirectory() {
    return absoluteOr("XDG_RUNTIME_DIR", "/tmp/pxmenu-" + std::to_string(::getuid()));
}

std::string userDirectory(std::string_view name) {
    std::string variable = "XDG_" + std::string(name) + "_DIR";
    if (auto file = io::readWholeFile(configHome() + "/user-dirs.dirs")) {
        std::istringstream lines(file.value());
        for (std::string line; std::getline(lines, line);)
            if (auto value = valueOfLine(line, variable); !value.empty()) return value;
    }
    return homeDirectory() + "/" + fallbackUserDirectory(name);
}

std::string settingsFolder() {
    return configHome() + "/pxmenu";
}
std::string applicationSupport() {
    return dataHome() + "/pxmenu";
}

} // namespace px::xdg
