#include "support/GioFileInfo.h"

#include "support/FileIO.h"
#include "support/GlibOwners.h"
#include "support/PathName.h"

#include <cerrno>
#include <fcntl.h>
#include <gio/gio.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace px::gio {

namespace {

template <typename T> using GObjectPtr = glib::Object<T>;
using OwnedChars = glib::String;

constexpr size_t kSniffBytes = 4096;

// Up to kSniffBytes from the start of a regular file; never opens a pipe or a device.
std::string leadingBytes(const std::string& path) {
    io::FileDescriptor fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!fd.valid()) return {};
    std::string bytes(kSniffBytes, '\0');
    ssize_t got;
    do
        got = ::read(fd.get(), bytes.data(), bytes.size());
    while (got < 0 && errno == EINTR);
    bytes.resize(got > 0 ? static_cast<size_t>(got) : 0);
    return bytes;
}

std::string guess(const std::string& name, const struct stat& info, const std::string& path) {
    gboolean uncertain = FALSE;
    OwnedChars type(g_content_type_guess(name.c_str(), nullptr, 0, &uncertain));
    if (uncertain && S_ISREG(info.st_mode)) {
        std::string head = leadingBytes(path);
        type.reset(g_content_type_guess(name.c_str(), reinterpret_cast<const guchar*>(head.data()),
                                        head.size(), nullptr));
    }
    return type ? std::string(type.get()) : std::string("application/octet-stream");
}

} // namespace

std::optional<std::string> contentTypeOfPath(const std::string& path) {
    struct stat info {};
    if (path.empty() || ::stat(path.c_str(), &info) != 0) return std::nullopt;
    if (S_ISDIR(info.st_mode)) return std::string("inode/directory");
    return guess(path::lastPathComponent(path), info, path);
}

bool isImageContentType(const std::string& contentType) {
    if (contentType.rfind("image/", 0) == 0) return true;
    return g_content_type_is_a(contentType.c_str(), "image/*");
}

std::optional<std::string> themedIconName(const std::string& contentType) {
    GObjectPtr<GIcon> icon(g_content_type_get_icon(contentType.c_str()));
    if (!icon || !G_IS_THEMED_ICON(icon.get())) return std::nullopt;
    const gchar* const* names = g_themed_icon_get_names(G_THEMED_ICON(icon.get()));
    if (!names || !names[0] || !*names[0]) return std::nullopt;
    return std::string(names[0]);
}

std::vector<std::string> themedIconNames(const std::string& contentType) {
    std::vector<std::string> result;
    GObjectPtr<GIcon> icon(g_content_type_get_icon(contentType.c_str()));
    if (!icon || !G_IS_THEMED_ICON(icon.get())) return result;
    const gchar* const* names = g_themed_icon_get_names(G_THEMED_ICON(icon.get()));
    for (; names && *names; ++names)
        if (**names) result.emplace_back(*names);
    return result;
}

std::optional<std::string> metadataString(const std::string& path, const std::string& attribute) {
    if (path.empty()) return std::nullopt;
    GObjectPtr<GFile> file(g_file_new_for_path(path.c_str()));
    GObjectPtr<GFileInfo> info(
        g_file_query_info(file.get(), attribute.c_str(), G_FILE_QUERY_INFO_NONE, nullptr, nullptr));
    if (!info || g_file_info_get_attribute_type(info.get(), attribute.c_str()) !=
                     G_FILE_ATTRIBUTE_TYPE_STRING)
        return std::nullopt;
    const char* value = g_file_info_get_attribute_string(info.get(), attribute.c_str());
    if (!value || !*value) return std::nullopt;
    return std::string(value);
}

} // namespace px::gio
