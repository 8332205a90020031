// The factory contents of the menu lists.
#include "config/PXDefaultData.h"

#include <array>

namespace px {

namespace {

using plist::Value;

struct MainRow {
    const char* key;
    const char* icon;
    bool disabled;
    bool disabledAuth;
    const char* changedVersion;
};

constexpr std::array<MainRow, 28> kMainMenu{{
    {"New File", "newfile", false, false, nullptr},
    {"Common Path", "favorites", false, true, nullptr},
    {"Common App", "app", false, false, nullptr},
    {"Folder Icon", "foldericon", false, false, "2.1.0"},
    {"Execute Script", "script", true, false, "2.3.3"},
    {"Copy to", "copy", false, false, nullptr},
    {"Move to", "move", false, false, nullptr},
    {"Convert to", "convert", false, false, nullptr},
    {"Cut Paste", "cut", false, false, "2.0.1"},
    {"Lock and Unlock", "lock", true, false, "2.3.0"},
    {"Encrypted Compression", "compress", false, false, "2.2.0"},
    {"Embed in Folder", "embed", true, false, "2.3.0"},
    {"Unembed Folder", "unembed", true, false, "2.3.0"},
    {"Color Picker", "colorpicker", false, false, "2.3.0"},
    {"Extract Icon", "img", true, false, nullptr},
    {"File Info", "fileinfo", true, false, nullptr},
    {"Terminal Window", "terminal", false, true, nullptr},
    {"Terminal Tab", "terminal", true, true, nullptr},
    {"Terminal To", "terminal", true, true, nullptr},
    {"iTerm2 Window", "iterm2", false, true, nullptr},
    {"iTerm2 Tab", "iterm2", true, true, nullptr},
    {"iTerm2 To", "iterm2", true, true, nullptr},
    {"Copy Path", "copypath", false, true, nullptr},
    {"Delete", "delete", true, false, nullptr},
    {"Hide Selected Files", "hidefile", false, false, nullptr},
    {"Hide All Files", "hidefile", false, false, nullptr},
    {"Unhide All Files", "showfile", false, false, nullptr},
    {"System Hide Files", "about", true, true, nullptr},
}};

struct AppRow {
    const char* key;
    const char* icon;
    bool disabled;
    const char* changedVersion;
};

constexpr std::array<AppRow, 11> kCommonApps{{
    {"WeChat", "weixin", false, nullptr},
    {"Visual Studio Code", "vscode", false, nullptr},
    {"Sublime Text", "sublime", false, nullptr},
    {"Android Studio", "studio", false, nullptr},
    {"IntelliJ IDEA", "idea", false, nullptr},
    {"WebStorm", "webstorm", false, nullptr},
    {"PyCharm", "pycharm", true, nullptr},
    {"PhpStorm", "phpstorm", true, nullptr},
    {"GoLand", "goland", true, nullptr},
    {"Warp", "warp", true, "2.5.1"},
    {"Emacs", "emacs", true, nullptr},
}};

constexpr std::array<const char*, 19> kNewFileExtensions{
    "txt", "rtf", "json", "docx", "xlsx", "pptx", "pages", "numbers", "key", "md",
    "wps", "et",  "dps",  "html", "xml",  "css",  "js",    "py",      "sh"};
constexpr std::size_t kEnabledNewFileCount = 11;

constexpr std::array<const char*, 20> kFolderIcons{
    "love",    "google", "java",  "qq",    "zapier",   "pyq",    "html5",
    "twitter", "ding",   "skype", "apple", "share",    "wechat", "weibo",
    "youtube", "wepay",  "react", "erji",  "question", "star"};
constexpr std::size_t kEnabledFolderIconCount = 11;

Value entry(plist::Dictionary fields) {
    return Value::makeDictionary(std::move(fields));
}

Value mainEntry(const MainRow& row) {
    plist::Dictionary fields{{"key", Value(row.key)}, {"icon", Value(row.icon)}};
    if (row.disabled) fields.emplace("disabled", Value(true));
    if (row.disabledAuth) fields.emplace("disabledAuth", Value(true));
    if (row.changedVersion) fields.emplace("is changed version", Value(row.changedVersion));
    return entry(std::move(fields));
}

Value appEntry(const AppRow& row) {
    plist::Dictionary fields{{"key", Value(row.key)}, {"icon", Value(row.icon)}};
    if (row.disabled) fields.emplace("disabled", Value(true));
    if (row.changedVersion) fields.emplace("is changed version", Value(row.changedVersion));
    return entry(std::move(fields));
}

} // namespace

const std::vector<std::string>& PXDefaultData::foreverKeyArray() {
    static const std::vector<std::string> keys{
        "New File", "Terminal Window", "Terminal Tab",     "Terminal To",      "Copy Path",
        "Delete",   "File Info",       "Unhide All Files", "System Hide Files"};
    return keys;
}

Value PXDefaultData::defaultMainMenu() {
    plist::Array items;
    for (const auto& row : kMainMenu)
        items.push_back(mainEntry(row));
    return Value::makeArray(std::move(items));
}

Value PXDefaultData::defaultNewFileMenu() {
    plist::Array items{entry({{"key", Value("New File From Window")},
                              {"icon", Value("newfile")},
                              {"is changed version", Value("2.3.2")}})};
    for (std::size_t i = 0; i < kNewFileExtensions.size(); ++i) {
        Value ext(kNewFileExtensions[i]);
        Value disabled(i < kEnabledNewFileCount ? 0 : 1);
        items.push_back(entry({{"key", ext}, {"ext", ext}, {"icon", ext}, {"disabled", disabled}}));
    }
    return Value::makeArray(std::move(items));
}

Value PXDefaultData::defaultCommonAppMenu() {
    plist::Array items;
    for (const auto& row : kCommonApps)
        items.push_back(appEntry(row));
    return Value::makeArray(std::move(items));
}

Value PXDefaultData::defaultFolderIconMenu() {
    plist::Array items;
    for (std::size_t i = 0; i < kFolderIcons.size(); ++i) {
        std::string name = kFolderIcons[i];
        Value icon(name == "love" ? std::string("foldericon") : name);
        Value disabled(i < kEnabledFolderIconCount ? 0 : 1);
        items.push_back(entry({{"key", Value(name)}, {"icon", icon}, {"disabled", disabled}}));
    }
    return Value::makeArray(std::move(items));
}

} // namespace px
