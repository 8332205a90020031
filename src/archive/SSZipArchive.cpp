#include "archive/SSZipArchive.h"

#include "archive/FileEntrySource.h"
#include "archive/PendingEntry.h"
#include "archive/ZipAssembly.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace px {

namespace {

std::string lastComponent(const std::string& path) {
    return std::filesystem::path(path).filename().string();
}

archive::PendingEntry entryFor(const std::string& path, std::string name,
                               std::unique_ptr<archive::EntrySource> source) {
    ZipFileInfo info;
    SSZipArchive::zipInfo(info, path);
    archive::PendingEntry entry;
    entry.name = std::move(name);
    entry.source = std::move(source);
    entry.dosTime = info.dosTime;
    entry.dosDate = info.dosDate;
    entry.externalAttributes = info.externalFileAttributes;
    return entry;
}

// The archive's folder must take the temporary file; refuse early rather than after the work.
ErrorOr<void> checkFolderWritable(const std::string& path) {
    std::filesystem::path folder = std::filesystem::path(path).parent_path();
    if (::access(folder.empty() ? "." : folder.c_str(), W_OK | X_OK) != 0)
        return Error::fromErrno("cannot create " + path, errno);
    return {};
}

} // namespace

SSZipArchive::SSZipArchive(std::string path) : m_path(std::move(path)) {}

SSZipArchive::~SSZipArchive() = default;

bool SSZipArchive::fail(Error error) {
    m_lastError = std::move(error);
    return false;
}

bool SSZipArchive::open() {
    if (auto writable = checkFolderWritable(m_path); writable.isError())
        return fail(writable.releaseError());
    m_open = true;
    return true;
}

bool SSZipArchive::writeFileAtPath(const std::string& path,
                                   const std::optional<std::string>& withFileName,
                                   const std::optional<std::string>& withPassword) {
    auto source = archive::FileEntrySource::make(path);
    if (source.isError()) return fail(source.releaseError());
    archive::PendingEntry entry =
        entryFor(path, withFileName.value_or(lastComponent(path)),
                 std::make_unique<archive::FileEntrySource>(source.releaseValue()));
    entry.password = withPassword.value_or(std::string());
    return addEntry(std::move(entry));
}

// Folder entries hold no data and are never encrypted.
bool SSZipArchive::writeFolderAtPath(const std::string& path, const std::string& withFolderName,
                                     const std::optional<std::string>&) {
    return addEntry(
        entryFor(path, withFolderName + "/", std::make_unique<archive::EmptyEntrySource>()));
}

bool SSZipArchive::addEntry(archive::PendingEntry entry) {
    if (!m_open) return fail(Error{"the archive " + m_path + " is not open", EBADF});
    if (!m_names.insert(entry.name).second)
        return fail(
            Error{"cannot add " + entry.name + ": the name is already in the archive", EEXIST});
    m_entries.push_back(std::move(entry));
    return true;
}

void SSZipArchive::setProgressHandler(std::function<void(std::size_t)> handler) {
    m_progressHandler = std::move(handler);
}

void SSZipArchive::setCancelPredicate(std::function<bool()> predicate) {
    m_cancelPredicate = std::move(predicate);
}

bool SSZipArchive::close() {
    if (!m_open) return fail(Error{"the archive " + m_path + " is not open", EBADF});
    m_open = false;
    std::vector<archive::PendingEntry> entries = std::move(m_entries);
    m_names.clear();
    std::size_t itemsDone = 0;
    archive::AssemblyHooks hooks;
    hooks.entryWritten = [this, &itemsDone] {
        ++itemsDone;
        if (m_progressHandler) m_progressHandler(itemsDone);
    };
    hooks.cancelled = m_cancelPredicate;
    auto closed = archive::assembleZip(m_path, entries, hooks);
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

} // namespace px
