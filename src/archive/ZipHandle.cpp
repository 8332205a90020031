#include "archive/ZipHandle.h"

#include "archive/ZipError.h"
#include "archive/ZipSourceBridge.h"
#include "support/FileIO.h"
#include "support/TemporaryFiles.h"

#include <cerrno>
#include <filesystem>
#include <unistd.h>
#include <zip.h>

namespace px::archive {

namespace {

// libzip writes the archive into a new file beside the path at close; refuse early when it could
// not, rather than after all the work.
ErrorOr<void> checkFolderWritable(const std::string& path) {
    std::filesystem::path folder = std::filesystem::path(path).parent_path();
    if (::access(folder.empty() ? "." : folder.c_str(), W_OK | X_OK) != 0)
        return Error::fromErrno("cannot create " + path, errno);
    return {};
}

int cancelCallback(zip_t*, void* state) {
    return static_cast<ZipHandle::Hooks*>(state)->checkCancelled() ? 1 : 0;
}

} // namespace

ErrorOr<ZipHandle> ZipHandle::create(const std::string& path) {
    TRY(checkFolderWritable(path));
    // libzip writes into its own temporary beside the name it is given and renames that over
    // the name at close; given a temporary name of ours, both are recognisably this program's.
    const std::string temporary = io::temporaryBeside(path);
    int code = 0;
    zip_t* zip = zip_open(temporary.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &code);
    if (zip == nullptr) return zipErrorFromCode(code, "cannot create " + path);
    return ZipHandle(zip, path, temporary);
}

ZipHandle::ZipHandle(zip_t* zip, std::string path, std::string temporary)
    : m_zip(zip), m_path(std::move(path)), m_temporary(std::move(temporary)),
      m_hooks(std::make_unique<Hooks>()) {}

ZipHandle::ZipHandle(ZipHandle&& other) noexcept
    : m_zip(std::exchange(other.m_zip, nullptr)), m_path(std::move(other.m_path)),
      m_temporary(std::move(other.m_temporary)), m_hooks(std::move(other.m_hooks)) {}

ZipHandle& ZipHandle::operator=(ZipHandle&& other) noexcept {
    if (this != &other) {
        discard();
        m_zip = std::exchange(other.m_zip, nullptr);
        m_path = std::move(other.m_path);
        m_temporary = std::move(other.m_temporary);
        m_hooks = std::move(other.m_hooks);
    }
    return *this;
}

ZipHandle::~ZipHandle() {
    discard();
}

void ZipHandle::discard() {
    if (m_zip != nullptr) zip_discard(std::exchange(m_zip, nullptr));
}

ErrorOr<void> ZipHandle::add(const std::string& name, std::unique_ptr<EntrySource> source,
                             const ZipEntryOptions& options) {
    if (m_zip == nullptr) return Error{"the archive is closed", EBADF};
    zip_source_t* zipSource =
        makeZipSource(m_zip, std::move(source), options.modificationTime, *m_hooks);
    if (zipSource == nullptr) return zipError(zip_get_error(m_zip), "cannot add " + name);
    zip_int64_t index = zip_file_add(m_zip, name.c_str(), zipSource, ZIP_FL_ENC_GUESS);
    if (index < 0) {
        zip_source_free(zipSource);
        return zipError(zip_get_error(m_zip), "cannot add " + name);
    }
    auto configured = configure(static_cast<std::uint64_t>(index), options);
    if (configured.isError()) zip_delete(m_zip, static_cast<std::uint64_t>(index));
    return configured;
}

// libzip reads a compression level of 0 as "default", which for deflate is 9, so the level is
// always passed explicitly and 0 selects storing.
ErrorOr<void> ZipHandle::configure(std::uint64_t index, const ZipEntryOptions& options) {
    bool stored = options.compressionLevel == 0;
    bool ok = zip_set_file_compression(
                  m_zip, index, stored ? ZIP_CM_STORE : ZIP_CM_DEFLATE,
                  stored ? 0 : static_cast<zip_uint32_t>(options.compressionLevel)) == 0 &&
              zip_file_set_external_attributes(m_zip, index, 0, ZIP_OPSYS_UNIX,
                                               options.externalAttributes) == 0;
    if (ok && !options.password.empty()) {
        zip_uint16_t method = options.aes ? ZIP_EM_AES_256 : ZIP_EM_TRAD_PKWARE;
        ok = zip_file_set_encryption(m_zip, index, method, options.password.c_str()) == 0;
    }
    if (!ok) return zipError(zip_get_error(m_zip), "cannot set up an entry");
    return {};
}

ErrorOr<void> ZipHandle::close(std::function<void()> itemFinished,
                               std::function<bool()> cancelled) {
    if (m_zip == nullptr) return Error{"the archive is closed", EBADF};
    m_hooks->itemFinished = std::move(itemFinished);
    m_hooks->cancelled = std::move(cancelled);
    if (zip_get_num_entries(m_zip, 0) == 0) return writeEmptyArchive();
    zip_register_cancel_callback_with_state(m_zip, &cancelCallback, nullptr, m_hooks.get());
    if (zip_close(m_zip) == 0) {
        m_zip = nullptr;
        return publish();
    }
    Error error = failure();
    discard();
    return error;
}

Error ZipHandle::failure() {
    if (m_hooks->wasCancelled) return Error{"writing " + m_path + " was cancelled", ECANCELED};
    if (m_hooks->sourceError) return *m_hooks->sourceError;
    return zipError(zip_get_error(m_zip), "cannot write " + m_path);
}

// The archive libzip wrote and closed is made durable before it takes its name.
ErrorOr<void> ZipHandle::publish() {
    auto synced = io::syncFile(m_temporary);
    if (!synced.isError() && ::rename(m_temporary.c_str(), m_path.c_str()) == 0) return {};
    const Error error =
        synced.isError() ? synced.error() : Error::fromErrno("cannot create " + m_path, errno);
    ::unlink(m_temporary.c_str());
    return error;
}

// libzip deletes an archive left without entries; an empty archive is still what was asked for.
ErrorOr<void> ZipHandle::writeEmptyArchive() {
    discard();
    if (m_hooks->checkCancelled()) return Error{"writing " + m_path + " was cancelled", ECANCELED};
    static constexpr char endOfCentralDirectory[22] = {'P', 'K', 5, 6};
    return io::replaceFileAtomically(m_path, {endOfCentralDirectory, sizeof endOfCentralDirectory});
}

} // namespace px::archive
