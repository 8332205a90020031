#include "archive/SSZipArchive.h"

#include "archive/FileEntrySource.h"
#include "archive/ZipHandle.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <sys/stat.h>

namespace px {

namespace {

constexpr int kDeflateDefaultLevel = 6;

int effectiveLevel(int compressionLevel) {
    if (compressionLevel < 0) return kDeflateDefaultLevel;
    return std::min(compressionLevel, 9);
}

std::string passwordOf(const std::optional<std::string>& password) {
    return password.value_or(std::string());
}

std::string lastComponent(const std::string& path) {
    return std::filesystem::path(path).filename().string();
}

} // namespace

SSZipArchive::SSZipArchive(std::string path) : m_path(std::move(path)) {}

SSZipArchive::~SSZipArchive() = default;

bool SSZipArchive::fail(Error error) {
    m_lastError = std::move(error);
    return false;
}

bool SSZipArchive::open() {
    auto handle = archive::ZipHandle::create(m_path);
    if (handle.isError()) return fail(handle.releaseError());
    m_zip = std::make_unique<archive::ZipHandle>(handle.releaseValue());
    return true;
}

bool SSZipArchive::writeFileAtPath(const std::string& path,
                                   const std::optional<std::string>& withFileName,
                                   const std::optional<std::string>& withPassword) {
    return writeFileAtPath(path, withFileName, kDefaultCompressionLevel, withPassword, true);
}

bool SSZipArchive::writeFileAtPath(const std::string& path,
                                   const std::optional<std::string>& withFileName,
                                   int compressionLevel, const std::optional<std::string>& password,
                                   bool AES) {
    auto source = archive::FileEntrySource::make(path);
    if (source.isError()) return fail(source.releaseError());
    ZipFileInfo info;
    zipInfo(info, path);
    archive::ZipEntryOptions options{effectiveLevel(compressionLevel), passwordOf(password), AES,
                                     dateOfZipInfo(info), info.externalFileAttributes};
    return addEntry(withFileName.value_or(lastComponent(path)),
                    std::make_unique<archive::FileEntrySource>(source.releaseValue()), options);
}

bool SSZipArchive::writeFolderAtPath(const std::string& path, const std::string& withFolderName,
                                     const std::optional<std::string>&) {
    ZipFileInfo info;
    zipInfo(info, path);
    archive::ZipEntryOptions options{
        0, {}, false, dateOfZipInfo(info), info.externalFileAttributes};
    return addEntry(withFolderName + "/", std::make_unique<archive::EmptyEntrySource>(), options);
}

bool SSZipArchive::addEntry(const std::string& name, std::unique_ptr<archive::EntrySource> source,
                            const archive::ZipEntryOptions& options) {
    if (!m_zip) return fail(Error{"the archive " + m_path + " is not open", EBADF});
    auto added = m_zip->add(name, std::move(source), options);
    if (added.isError()) return fail(added.releaseError());
    return true;
}

void SSZipArchive::setProgressHandler(std::function<void(std::size_t)> handler) {
    m_progressHandler = std::move(handler);
}

void SSZipArchive::setCancelPredicate(std::function<bool()> predicate) {
    m_cancelPredicate = std::move(predicate);
}

bool SSZipArchive::close() {
    if (!m_zip) return fail(Error{"the archive " + m_path + " is not open", EBADF});
    std::unique_ptr<archive::ZipHandle> zip = std::move(m_zip);
    std::size_t itemsDone = 0;
    auto finished = [this, &itemsDone] {
        ++itemsDone;
        if (m_progressHandler) m_progressHandler(itemsDone);
    };
    auto closed = zip->close(finished, m_cancelPredicate);
    if (closed.isError()) return fail(closed.releaseError());
    return true;
}

void SSZipArchive::zipInfo(ZipFileInfo& info, const std::string& setAttributesOfItemAtPath) {
    struct stat status {};
    if (::stat(setAttributesOfItemAtPath.c_str(), &status) != 0) return;
    zipInfo(info, status.st_mtime);
    std::uint32_t type = S_ISDIR(status.st_mode) ? S_IFDIR : S_IFREG;
    info.externalFileAttributes = (type | (status.st_mode & 07777)) << 16;
}

void SSZipArchive::zipInfo(ZipFileInfo& info, std::time_t setDate) {
    struct tm local {};
    if (::localtime_r(&setDate, &local) == nullptr || local.tm_year < 80) {
        info.dosDate = (1 << 5) | 1; // 1980-01-01 00:00:00
        info.dosTime = 0;
    } else if (local.tm_year > 207) {
        info.dosDate = (127 << 9) | (12 << 5) | 31; // 2107-12-31 23:59:58
        info.dosTime = (23 << 11) | (59 << 5) | 29;
    } else {
        info.dosDate = static_cast<std::uint16_t>(((local.tm_year - 80) << 9) |
                                                  ((local.tm_mon + 1) << 5) | local.tm_mday);
        info.dosTime = static_cast<std::uint16_t>((local.tm_hour << 11) | (local.tm_min << 5) |
                                                  (local.tm_sec / 2));
    }
}

std::time_t SSZipArchive::dateOfZipInfo(const ZipFileInfo& info) {
    struct tm local {};
    local.tm_year = (info.dosDate >> 9) + 80;
    local.tm_mon = std::max((info.dosDate >> 5) & 0xf, 1) - 1;
    local.tm_mday = std::max(info.dosDate & 0x1f, 1);
    local.tm_hour = info.dosTime >> 11;
    local.tm_min = (info.dosTime >> 5) & 0x3f;
    local.tm_sec = (info.dosTime & 0x1f) * 2;
    local.tm_isdst = -1;
    return ::mktime(&local);
}

} // namespace px
