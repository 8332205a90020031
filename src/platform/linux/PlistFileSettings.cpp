#include "platform/linux/PlistFileSettings.h"

#include "plist/PlistCodec.h"
#include "support/FileIO.h"
#include "support/ReadScope.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <optional>
#include <unistd.h>

namespace px::platform {

namespace {

std::string parentOf(const std::string& path) {
    auto slash = path.rfind('/');
    return slash == std::string::npos || slash == 0 ? "/" : path.substr(0, slash);
}

// Puts `from` at the first free name of "<path>.broken", "<path>.broken-1", ... and answers
// it; `keepOriginal` links instead of moving, so the original stays where it is.
ErrorOr<std::string> placeAside(const std::string& path, bool keepOriginal) {
    for (int n = 0; n < 10000; ++n) {
        std::string aside = path + ".broken" + (n == 0 ? "" : "-" + std::to_string(n));
        const int placed = keepOriginal ? ::link(path.c_str(), aside.c_str())
                                        : ::renameat2(AT_FDCWD, path.c_str(), AT_FDCWD,
                                                      aside.c_str(), RENAME_NOREPLACE);
        if (placed == 0) return aside;
        if (errno == EEXIST) continue;
        if (!keepOriginal && (errno == EINVAL || errno == ENOSYS) && !io::exists(aside) &&
            ::rename(path.c_str(), aside.c_str()) == 0)
            return aside;
        if (keepOriginal && errno != ENOENT && !io::exists(aside)) {
            // No hard links here: a copy keeps the bytes as well.
            auto bytes = TRY(io::readWholeFile(path));
            TRY(io::replaceFileAtomically(aside, bytes));
            return aside;
        }
        return Error::fromErrno("cannot keep the damaged file as " + aside, errno);
    }
    return Error{"no free name to keep the damaged file " + path, EEXIST};
}

} // namespace

PlistFileSettings::PlistFileSettings(std::string path, Restore restore)
    : m_path(std::move(path)), m_restore(std::move(restore)),
      m_root(plist::Value::makeDictionary()) {}

plist::Value PlistFileSettings::objectForKey(std::string_view key) {
    {
        std::lock_guard guard(m_mutex);
        refreshLocked(Check::OncePerScope);
        if (!m_restorePending) return m_root.get(key);
    }
    restoreIfDamaged();
    std::lock_guard guard(m_mutex);
    return m_root.get(key);
}

plist::Value PlistFileSettings::snapshot() {
    {
        std::lock_guard guard(m_mutex);
        refreshLocked(Check::OncePerScope);
        if (!m_restorePending) return m_root;
    }
    restoreIfDamaged();
    std::lock_guard guard(m_mutex);
    return m_root;
}

void PlistFileSettings::setObject(const std::string& key, plist::Value value) {
    modify(key, [&](const plist::Value&) { return value; });
}

void PlistFileSettings::modify(const std::string& key,
                               const std::function<plist::Value(const plist::Value&)>& change) {
    {
        std::lock_guard guard(m_mutex);
        (void)io::makeDirectories(parentOf(m_path), 0700);
        auto lock = io::FileLock::acquire(m_path + ".lock");
        if (lock.isError())
            reportOnce("pxmenu: " + lock.error().message + "; writing without a lock");
        m_holdingFileLock = true;
        refreshLocked(Check::Always); // what other processes wrote must not be lost
        plist::Value root = m_root.mutableCopy();
        if (plist::Value value = change(m_root.get(key)))
            root.mutableDictionary().insert_or_assign(key, value.frozen());
        else
            root.mutableDictionary().erase(key);
        if (auto written = plist::writeFileAtomically(m_path, root); written.isError()) {
            reportOnce("pxmenu: cannot save settings: " + written.error().message);
        } else {
            m_root = root.copy();
            m_stamp = {};
            refreshLocked(Check::Always);
        }
        m_holdingFileLock = false;
    }
    restoreIfDamaged();
}

std::optional<std::string> PlistFileSettings::keepDamagedCopy(const std::string& why) {
    std::lock_guard guard(m_mutex);
    auto lock = io::FileLock::acquire(m_path + ".lock");
    auto kept = placeAside(m_path, true);
    if (kept.isError()) {
        reportOnce("pxmenu: the settings file " + m_path + " is damaged (" + why +
                   "); using the factory settings, but " + kept.error().message);
        return std::nullopt;
    }
    reportOnce("pxmenu: the settings file " + m_path + " is damaged (" + why +
               "); using the factory settings, and keeping the damaged file as " + kept.value());
    return kept.value();
}

void PlistFileSettings::refreshLocked(Check check) {
    const std::uint64_t scope = ReadScope::current();
    if (check == Check::OncePerScope && ReadScope::holds(m_checkedInScope)) return;
    m_checkedInScope = scope;
    io::FileStamp stamp = io::FileStamp::of(m_path);
    if (!stamp.exists()) {
        m_root = plist::Value::makeDictionary();
        m_stamp = {};
        return;
    }
    if (stamp != m_stamp) loadLocked(stamp);
}

void PlistFileSettings::loadLocked(const io::FileStamp& stamp) {
    m_stamp = stamp;
    auto parsed = plist::readFile(m_path);
    if (parsed.isError() && parsed.error().code == ENOENT) {
        m_root = plist::Value::makeDictionary();
        m_stamp = {};
        return;
    }
    if (!parsed.isError() && parsed.value().isDictionary()) {
        m_root = parsed.releaseValue();
        return;
    }
    m_root = plist::Value::makeDictionary();
    setDamagedFileAsideLocked(parsed.isError() ? parsed.error().message
                                               : "it does not hold a dictionary");
}

// Another process may have found the same damage and already put a repaired file in its
// place: under the lock, only the file that was read is moved.
void PlistFileSettings::setDamagedFileAsideLocked(const std::string& why) {
    std::optional<io::FileLock> lock;
    if (!m_holdingFileLock) {
        (void)io::makeDirectories(parentOf(m_path), 0700);
        if (auto acquired = io::FileLock::acquire(m_path + ".lock"); !acquired.isError())
            lock.emplace(acquired.releaseValue());
    }
    if (io::FileStamp::of(m_path) != m_stamp) {
        m_stamp = {};
        return; // replaced meanwhile: the next read takes the new file
    }
    m_stamp = {};
    auto aside = placeAside(m_path, false);
    const std::string starting = m_restore ? "the factory settings" : "empty settings";
    if (aside.isError()) {
        reportOnce("pxmenu: the settings file " + m_path + " is damaged (" + why + "); using " +
                   starting + ", but " + aside.error().message);
        return;
    }
    reportOnce("pxmenu: the settings file " + m_path + " is damaged (" + why + "); using " +
               starting + ", and keeping the damaged file as " + aside.value());
    m_restorePending = static_cast<bool>(m_restore);
}

// Runs outside the suite's own lock: the restore reads and writes through the suite.
void PlistFileSettings::restoreIfDamaged() {
    {
        std::lock_guard guard(m_mutex);
        if (!m_restorePending || m_restoring) return;
        m_restorePending = false;
        m_restoring = true;
    }
    m_restore(*this);
    std::lock_guard guard(m_mutex);
    m_restoring = false;
}

void PlistFileSettings::reportOnce(const std::string& message) {
    if (m_reported) return;
    m_reported = true;
    std::fprintf(stderr, "%s\n", message.c_str());
}

} // namespace px::platform
