#include "platform/linux/TerminalTable.h"

#include <algorithm>

namespace px::terminal {

namespace {

// "{dir}" in a template argument stands for the folder.
constexpr std::string_view kFolder = "{dir}";

struct Row {
    std::string_view emulator;
    std::vector<std::string_view> window;
    std::vector<std::string_view> tab; // empty: no tabs
};

const std::vector<Row>& rows() {
    static const std::vector<Row> table{
        {"gnome-terminal",
         {"--window", "--working-directory={dir}"},
         {"--tab", "--working-directory={dir}"}},
        {"konsole", {"--workdir", "{dir}"}, {"--new-tab", "--workdir", "{dir}"}},
        {"xfce4-terminal",
         {"--window", "--working-directory", "{dir}"},
         {"--tab", "--working-directory", "{dir}"}},
        {"mate-terminal",
         {"--window", "--working-directory", "{dir}"},
         {"--tab", "--working-directory", "{dir}"}},
        {"tilix",
         {"--working-directory={dir}"},
         {"--action=app-new-session", "--working-directory={dir}"}},
        {"terminator", {"--working-directory={dir}"}, {"--new-tab", "--working-directory={dir}"}},
        {"kitty", {"--directory", "{dir}"}, {}},
        {"alacritty", {"--working-directory", "{dir}"}, {}},
        {"wezterm", {"start", "--cwd", "{dir}"}, {}},
        {"foot", {"--working-directory={dir}"}, {}},
        {"xterm", {}, {}},
    };
    return table;
}

const Row* find(std::string_view emulator) {
    const auto& table = rows();
    auto it = std::find_if(table.begin(), table.end(),
                           [&](const Row& row) { return row.emulator == emulator; });
    return it == table.end() ? nullptr : &*it;
}

std::string fill(std::string_view argument, const std::string& folder) {
    auto at = argument.find(kFolder);
    if (at == std::string_view::npos) return std::string(argument);
    std::string result(argument.substr(0, at));
    result += folder;
    result += argument.substr(at + kFolder.size());
    return result;
}

std::string_view fileName(std::string_view path) {
    auto slash = path.rfind('/');
    return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

} // namespace

const std::vector<std::string>& knownEmulators() {
    static const std::vector<std::string> names = [] {
        std::vector<std::string> result;
        for (const auto& row : rows())
            result.emplace_back(row.emulator);
        return result;
    }();
    return names;
}

std::optional<std::string> emulatorOfProgram(std::string_view programPath) {
    std::string_view name = fileName(programPath);
    constexpr std::string_view kWrapper = ".wrapper";
    if (name.size() > kWrapper.size() && name.ends_with(kWrapper))
        name.remove_suffix(kWrapper.size());
    if (!find(name)) return std::nullopt;
    return std::string(name);
}

bool supportsTabs(std::string_view emulator) {
    const Row* row = find(emulator);
    return row && !row->tab.empty();
}

std::vector<std::string> arguments(std::string_view emulator, const std::string& folder, bool tab) {
    const Row* row = find(emulator);
    if (!row) return {};
    const auto& templates = tab && !row->tab.empty() ? row->tab : row->window;
    std::vector<std::string> result;
    result.reserve(templates.size());
    for (auto argument : templates)
        result.push_back(fill(argument, folder));
    return result;
}

} // namespace px::terminal
