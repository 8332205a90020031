#include "support/FileHash.h"

#include "support/FileIO.h"
#include "support/GioFileInfo.h"
#include "support/PathName.h"
#include "support/Xdg.h"

#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <fmt/format.h>
#include <glib.h>
#include <memory>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

namespace px::filehash {

namespace {

bool isWhiteSpace(gunichar c) {
    return c == 0x09 || c == 0x20 || c == 0xA0 || c == 0x1680 || (c >= 0x2000 && c <= 0x200A) ||
           c == 0x202F || c == 0x205F || c == 0x3000;
}

bool isLineBreak(gunichar c) {
    return (c >= 0x0A && c <= 0x0D) || c == 0x85 || c == 0x2028 || c == 0x2029;
}

// The code point that starts at `at`, or nothing when the bytes there are not UTF-8.
std::optional<gunichar> codePointAt(std::string_view text, size_t at) {
    gunichar c = g_utf8_get_char_validated(text.data() + at, static_cast<gssize>(text.size() - at));
    if (c == static_cast<gunichar>(-1) || c == static_cast<gunichar>(-2)) return std::nullopt;
    return c;
}

// The start of the last code point, when the text ends with a complete one.
std::optional<size_t> lastCodePointStart(std::string_view text) {
    size_t start = text.size() - 1;
    while (start > 0 && text.size() - start < 4 &&
           (static_cast<unsigned char>(text[start]) & 0xC0) == 0x80)
        --start;
    auto c = codePointAt(text, start);
    if (!c || start + static_cast<size_t>(g_unichar_to_utf8(*c, nullptr)) != text.size())
        return std::nullopt;
    return start;
}

template <typename Predicate> std::string_view trimmed(std::string_view text, Predicate trim) {
    for (std::optional<gunichar> c; !text.empty() && (c = codePointAt(text, 0)) && trim(*c);)
        text.remove_prefix(static_cast<size_t>(g_unichar_to_utf8(*c, nullptr)));
    for (std::optional<size_t> start;
         !text.empty() && (start = lastCodePointStart(text)) && trim(*codePointAt(text, *start));)
        text.remove_suffix(text.size() - *start);
    return text;
}

std::string_view withoutTrailingSlashes(std::string_view path) {
    while (path.size() > 1 && path.back() == '/')
        path.remove_suffix(1);
    return path;
}

bool isStatDirectory(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

// The "[Desktop Entry]" group of the folder's ".directory" file has a non-empty "Icon=".
bool directoryFileNamesIcon(const std::string& folder) {
    auto file = io::readWholeFile(path::appendingPathComponent(folder, ".directory"));
    if (!file) return false;
    std::istringstream lines(file.value());
    bool inEntry = false;
    for (std::string line; std::getline(lines, line);) {
        std::string_view text =
            trimmed(line, [](gunichar c) { return isWhiteSpace(c) || isLineBreak(c); });
        if (!text.empty() && text.front() == '[') inEntry = text == "[Desktop Entry]";
        if (!inEntry || text.rfind("Icon", 0) != 0) continue;
        std::string_view rest = trimmed(text.substr(4), isWhiteSpace);
        if (!rest.empty() && rest.front() == '=' && !trimmed(rest.substr(1), isWhiteSpace).empty())
            return true;
    }
    return false;
}

// Paths that `remove` never touches, however they are reached.
bool isProtectedFromRemoval(const std::string& path) {
    std::string_view trimmedPath = withoutTrailingSlashes(path);
    std::string component = path::lastPathComponent(trimmedPath);
    return trimmedPath.empty() || component == "/" || component == "." || component == ".." ||
           isSystemFolder(std::string(trimmedPath));
}

bool namesPlaceInside(const std::string& name) {
    if (!isValid(name)) return false;
    std::istringstream parts(name);
    for (std::string part; std::getline(parts, part, '/');)
        if (part == "." || part == "..") return false;
    return name.find_first_not_of('/') != std::string::npos;
}

struct ChecksumDeleter {
    void operator()(GChecksum* checksum) const { g_checksum_free(checksum); }
};

std::optional<std::string> md5OfRegularFile(const std::string& path) {
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0 || !S_ISREG(info.st_mode)) return std::nullopt;
    io::FileDescriptor fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!fd.valid()) return std::nullopt;
    std::unique_ptr<GChecksum, ChecksumDeleter> checksum(g_checksum_new(G_CHECKSUM_MD5));
    std::vector<guchar> buffer(1 << 16);
    for (;;) {
        ssize_t got = ::read(fd.get(), buffer.data(), buffer.size());
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return std::nullopt;
        if (got == 0) return std::string(g_checksum_get_string(checksum.get()));
        g_checksum_update(checksum.get(), buffer.data(), got);
    }
}

} // namespace

bool isValid(std::string_view text) {
    std::string_view rest =
        trimmed(text, [](gunichar c) { return isWhiteSpace(c) || isLineBreak(c); });
    return !rest.empty() && text != "(null)";
}

bool isValid(const char* text) {
    return text != nullptr && isValid(std::string_view(text));
}

bool isFolder(const std::string& path) {
    struct stat info {};
    return ::lstat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

bool isPackage(const std::string& path) {
    return !path::pathExtension(path).empty() && isFolder(path);
}

bool isImage(const std::string& path) {
    auto type = gio::contentTypeOfPath(path);
    return type && gio::isImageContentType(*type);
}

bool isDesktop(const std::string& path) {
    return path == xdg::userDirectory("DESKTOP");
}

std::vector<std::string> systemFolders() {
    std::vector<std::string> folders{"/home", "/", xdg::homeDirectory()};
    for (const char* name : {"DESKTOP", "DOCUMENTS", "DOWNLOAD", "PICTURES", "MUSIC", "VIDEOS"})
        folders.push_back(xdg::userDirectory(name));
    folders.insert(folders.end(), {"/usr", "/etc", "/opt", "/media", "/mnt"});
    return folders;
}

bool isSystemFolder(const std::string& path) {
    auto folders = systemFolders();
    return std::find(folders.begin(), folders.end(), path) != folders.end();
}

bool isWritable(const std::string& path) {
    return !path.empty() && ::access(path.c_str(), W_OK) == 0;
}

bool isLocked(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && (info.st_mode & S_IWUSR) == 0;
}

bool hasCustomIcon(const std::string& path) {
    if (!io::exists(path)) return false;
    if (gio::metadataString(path, "metadata::custom-icon")) return true;
    return isStatDirectory(path) && directoryFileNamesIcon(path);
}

bool remove(const std::string& path) {
    if (isProtectedFromRemoval(path) || !io::exists(path)) return false;
    std::error_code error;
    std::filesystem::remove_all(path, error);
    return !error && !io::exists(path);
}

bool createDir(const std::string& path) {
    if (isProtectedFromRemoval(path)) return false;
    if (io::exists(path) && !remove(path)) return false;
    return io::makeDirectories(path) && isFolder(path);
}

std::string toTempFolderPath(const std::string& name, bool clean) {
    if (!namesPlaceInside(name)) return {};
    std::string folder = xdg::applicationSupport() + "/" + name;
    if (io::exists(folder)) {
        if (!clean) return folder;
        if (!remove(folder)) return {};
    }
    return io::makeDirectories(folder) && isStatDirectory(folder) ? folder : std::string{};
}

void removeAllTempFolder() {
    std::string support = xdg::applicationSupport();
    for (const std::string& name : folderEntries(support))
        if (name.front() == '.') remove(support + "/" + name);
}

std::string trimWhiteSpace(std::string_view text) {
    return std::string(trimmed(text, isWhiteSpace));
}

std::string uniquePath(const std::string& path) {
    if (!io::exists(path)) return path;
    std::string base = path::deletingPathExtension(path);
    std::string extension = path::pathExtension(path);
    std::string suffix = extension.empty() ? std::string{} : "." + extension;
    for (unsigned long long n = 1;; ++n) {
        std::string candidate = fmt::format("{}-{}{}", base, n, suffix);
        if (!io::exists(candidate)) return candidate;
    }
}

std::string fileMD5(const std::string& path) {
    if (auto digest = md5OfRegularFile(path)) return *digest;
    return path::deletingPathExtension(path::lastPathComponent(path));
}

std::vector<std::string> folderEntries(const std::string& path) {
    std::unique_ptr<DIR, int (*)(DIR*)> folder(::opendir(path.c_str()), &::closedir);
    std::vector<std::string> names;
    if (!folder) return names;
    while (const dirent* entry = ::readdir(folder.get())) {
        std::string_view name = entry->d_name;
        if (name != "." && name != "..") names.emplace_back(name);
    }
    return names;
}

} // namespace px::filehash
