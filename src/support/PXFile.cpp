#include "support/PXFile.h"

#include "support/FileHash.h"
#include "support/FileSize.h"
#include "support/GioFileInfo.h"
#include "support/GlibOwners.h"
#include "support/PathName.h"

#include <algorithm>
#include <ctime>
#include <fcntl.h>
#include <glib.h>
#include <initializer_list>
#include <string_view>
#include <sys/stat.h>

namespace px {

namespace {

bool isOneOf(const std::string& value, std::initializer_list<std::string_view> choices) {
    return std::find(choices.begin(), choices.end(), value) != choices.end();
}

std::string formatLocalTime(std::time_t seconds) {
    std::tm local{};
    if (!::localtime_r(&seconds, &local)) return {};
    char text[32];
    size_t length = std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &local);
    return std::string(text, length);
}

enum class Stamp { Created, Modified };

// The item's birth time where the file system keeps one (else its change time), or its
// modification time; symbolic links are not followed.
std::optional<std::time_t> timestamp(const std::string& path, Stamp stamp) {
    struct statx info {};
    unsigned mask = STATX_BTIME | STATX_CTIME | STATX_MTIME;
    if (::statx(AT_FDCWD, path.c_str(), AT_SYMLINK_NOFOLLOW, mask, &info) != 0) return std::nullopt;
    if (stamp == Stamp::Modified) return static_cast<std::time_t>(info.stx_mtime.tv_sec);
    if (info.stx_mask & STATX_BTIME) return static_cast<std::time_t>(info.stx_btime.tv_sec);
    return static_cast<std::time_t>(info.stx_ctime.tv_sec);
}

std::string dateText(const std::string& path, Stamp stamp) {
    if (!filehash::isWritable(path)) return {};
    auto seconds = timestamp(path, stamp);
    return seconds ? formatLocalTime(*seconds) : std::string{};
}

} // namespace

std::shared_ptr<PXFile> PXFile::fileWithPath(std::string filePath) {
    return std::make_shared<PXFile>(std::move(filePath));
}

PXFile::PXFile(std::string filePath) : path(std::move(filePath)) {}

std::vector<std::shared_ptr<PXFile>> PXFile::children() {
    if (m_children) return *m_children;
    std::vector<std::shared_ptr<PXFile>> kept;
    for (const std::string& entry : filehash::folderEntries(path)) {
        auto child = fileWithPath(px::path::appendingPathComponent(path, entry));
        if (child->isHideFile()) continue;
        child->m_parent = weak_from_this();
        kept.push_back(std::move(child));
    }
    m_children = std::move(kept);
    return *m_children;
}

std::string PXFile::tempPath() {
    if (m_tempPath) return *m_tempPath;
    std::string scratch =
        filehash::toTempFolderPath(std::string(".").append(filehash::fileMD5(path)));
    if (!scratch.empty()) m_tempPath = scratch;
    return scratch;
}

void PXFile::removeTempPath() {
    if (m_tempPath) filehash::remove(*m_tempPath);
    m_tempPath.reset();
}

std::string PXFile::filename() const {
    return px::path::lastPathComponent(path);
}
std::string PXFile::name() const {
    return px::path::deletingPathExtension(filename());
}

std::string PXFile::simpleName() const {
    std::string simple = filename();
    while (!px::path::pathExtension(simple).empty())
        simple = px::path::deletingPathExtension(simple);
    return simple;
}

std::string PXFile::folder() const {
    return px::path::deletingLastPathComponent(path);
}
std::string PXFile::ext() const {
    return px::path::lowercased(px::path::pathExtension(path));
}

std::string PXFile::url() const {
    glib::String uri(g_filename_to_uri(path.c_str(), nullptr, nullptr));
    return uri ? std::string(uri.get()) : std::string{};
}

std::string PXFile::icon() const {
    auto type = gio::contentTypeOfPath(path);
    auto iconName = type ? gio::themedIconName(*type) : std::nullopt;
    return iconName.value_or("icon");
}

std::string PXFile::size() const {
    return filehash::fileSizeWithValue(filehash::fileSize(path));
}
std::string PXFile::createDate() const {
    return dateText(path, Stamp::Created);
}
std::string PXFile::modifyDate() const {
    return dateText(path, Stamp::Modified);
}

bool PXFile::isFolder() const {
    return filehash::isFolder(path);
}
bool PXFile::isHideFile() const {
    return filename().rfind('.', 0) == 0;
}
bool PXFile::isDesktop() const {
    return filehash::isDesktop(path);
}
bool PXFile::isImage() const {
    return isOneOf(ext(), {"png", "tiff", "jp2", "jpg", "jpeg", "gif", "bmp"});
}

bool PXFile::isKindle() const {
    return isOneOf(ext(), {"mobi", "azw3", "prc", "tpz", "azw", "azw4", "azs", "azl"});
}

bool PXFile::isTnef() const {
    return isOneOf(ext(), {"dat", "tnef"});
}
bool PXFile::isCHM() const {
    return isOneOf(ext(), {"chm"});
}

} // namespace px
