#include "platform/linux/TerminalServices.h"

#include "support/ProcessSpawn.h"
#include "platform/linux/TerminalTable.h"
#include "support/FileHash.h"

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <fmt/format.h>
#include <glib.h>
#include <sys/stat.h>

namespace px::platform {

namespace {

using Terminal = TerminalServices::Terminal;

struct ServiceRequest {
    bool second = false; // the "iTerm2" services
    bool tab = false;
};

std::optional<ServiceRequest> requestOf(const std::string& name) {
    if (name == "New Terminal at Folder") return ServiceRequest{false, false};
    if (name == "New Terminal Tab at Folder") return ServiceRequest{false, true};
    if (name == "New iTerm2 Window Here") return ServiceRequest{true, false};
    if (name == "New iTerm2 Tab Here") return ServiceRequest{true, true};
    return std::nullopt;
}

// The executable a program name (looked up in PATH) or path stands for.
std::optional<std::string> locate(const std::string& program) {
    if (!filehash::isValid(program)) return std::nullopt;
    gchar* found = g_find_program_in_path(program.c_str());
    if (!found) return std::nullopt;
    std::string path = found;
    g_free(found);
    return path;
}

std::string canonicalPath(const std::string& path) {
    char resolved[PATH_MAX];
    return ::realpath(path.c_str(), resolved) ? std::string(resolved) : path;
}

std::string fileName(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

// A program file as a known emulator. A Debian wrapper ("gnome-terminal.wrapper", which takes
// xterm's options) is replaced by the emulator itself when that is installed.
std::optional<Terminal> knownAs(const std::string& program) {
    auto emulator = terminal::emulatorOfProgram(program);
    if (!emulator) return std::nullopt;
    if (fileName(program) == *emulator) return Terminal{program, *emulator};
    if (auto direct = locate(*emulator)) return Terminal{*direct, *emulator};
    return std::nullopt;
}

// Identifies a located program by its own name, then by the file its links lead to (the
// alternatives system's x-terminal-emulator); an unknown program is started without arguments.
Terminal identify(const std::string& located) {
    if (auto known = knownAs(located)) return *known;
    if (auto known = knownAs(canonicalPath(located))) return *known;
    return Terminal{located, ""};
}

std::optional<Terminal> locateAndIdentify(const std::string& program) {
    auto located = locate(program);
    if (!located) return std::nullopt;
    return identify(*located);
}

bool sameTerminal(const Terminal& a, const Terminal& b) {
    if (!a.emulator.empty() && a.emulator == b.emulator) return true;
    return canonicalPath(a.program) == canonicalPath(b.program);
}

// The folder a terminal opens at for an item: the item when it is a folder, else its parent.
std::optional<std::string> folderFor(const std::string& path) {
    struct stat info {};
    if (path.empty() || path.front() != '/') return std::nullopt;
    if (::stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode)) return path;
    std::string parent = path.substr(0, std::max<std::size_t>(path.rfind('/'), 1));
    if (::stat(parent.c_str(), &info) == 0 && S_ISDIR(info.st_mode)) return parent;
    return std::nullopt;
}

bool openTerminalAt(const Terminal& terminal, const std::string& path, bool tab) {
    auto folder = folderFor(path);
    if (!folder) {
        fmt::print(stderr, "pxmenu: no folder to open a terminal at for {}\n", path);
        return false;
    }
    auto started =
        process::spawnDetached(TerminalServices::command(terminal, *folder, tab), *folder);
    if (started.isError()) fmt::print(stderr, "pxmenu: {}\n", started.error().message);
    return !started.isError();
}

} // namespace

TerminalServices::Preference TerminalServices::preferenceIn(std::shared_ptr<Settings> suite) {
    return [suite = std::move(suite)] { return suite->stringForKey("second terminal"); };
}

TerminalServices::TerminalServices(Preference secondTerminal)
    : m_secondTerminal(std::move(secondTerminal)) {}

bool TerminalServices::performService(const std::string& name,
                                      const std::vector<std::string>& paths) {
    auto request = requestOf(name);
    if (!request || paths.empty()) return false;
    auto terminal = request->second ? secondTerminal() : defaultTerminal();
    if (!terminal) {
        fmt::print(stderr, "pxmenu: no terminal emulator is installed for \"{}\"\n", name);
        return false;
    }
    bool allStarted = true;
    for (const auto& path : paths)
        allStarted = openTerminalAt(*terminal, path, request->tab) && allStarted;
    return allStarted;
}

std::optional<Terminal> TerminalServices::defaultTerminal() {
    const char* chosen = std::getenv("TERMINAL");
    if (chosen && filehash::isValid(chosen))
        if (auto terminal = locateAndIdentify(chosen)) return terminal;
    if (auto terminal = locateAndIdentify("x-terminal-emulator")) return terminal;
    for (const auto& emulator : terminal::knownEmulators())
        if (auto located = locate(emulator)) return Terminal{*located, emulator};
    return std::nullopt;
}

std::optional<Terminal> TerminalServices::secondTerminal() const {
    auto preference = m_secondTerminal ? m_secondTerminal() : std::nullopt;
    if (preference && filehash::isValid(*preference)) return locateAndIdentify(*preference);
    auto first = defaultTerminal();
    for (const auto& emulator : terminal::knownEmulators()) {
        auto located = locate(emulator);
        if (!located) continue;
        Terminal candidate{*located, emulator};
        if (!first || !sameTerminal(*first, candidate)) return candidate;
    }
    return std::nullopt;
}

std::vector<std::string> TerminalServices::command(const Terminal& terminal,
                                                   const std::string& folder, bool tab) {
    std::vector<std::string> argv{terminal.program};
    auto rest = terminal::arguments(terminal.emulator, folder, tab);
    argv.insert(argv.end(), rest.begin(), rest.end());
    return argv;
}

} // namespace px::platform
