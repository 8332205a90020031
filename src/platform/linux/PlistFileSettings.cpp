#include "platform/linux/PlistFileSettings.h"

#include "config/PlistCodec.h"
#include "support/FileIO.h"

#include <cstdio>
#include <sys/stat.h>

namespace px::platform {

namespace {

std::string parentOf(const std::string& path) {
    auto slash = path.rfind('/');
    return slash == std::string::npos || slash == 0 ? "/" : path.substr(0, slash);
}

} // namespace

PlistFileSettings::PlistFileSettings(std::string path)
    : m_path(std::move(path)), m_root(plist::Value::makeDictionary()) {}

plist::Value PlistFileSettings::objectForKey(std::string_view key) {
    std::lock_guard guard(m_mutex);
    refreshLocked();
    return m_root.get(key);
}

plist::Value PlistFileSettings::snapshot() {
    std::lock_guard guard(m_mutex);
    refreshLocked();
    return m_root;
}

void PlistFileSettings::setObject(const std::string& key, plist::Value value) {
    modify(key, [&](const plist::Value&) { return value; });
}

void PlistFileSettings::modify(const std::string& key,
                               const std::function<plist::Value(const plist::Value&)>& change) {
    std::lock_guard guard(m_mutex);
    (void)io::makeDirectories(parentOf(m_path), 0700);
    auto lock = io::FileLock::acquire(m_path + ".lock");
    if (lock.isError()) reportOnce("pxmenu: " + lock.error().message + "; writing without a lock");
    refreshLocked();
    if (m_broken) moveBrokenFileAsideLocked();
    plist::Value root = m_root.mutableCopy();
    if (plist::Value value = change(m_root.get(key)))
        root.mutableDictionary().insert_or_assign(key, value.frozen());
    else
        root.mutableDictionary().erase(key);
    if (auto written = plist::writeFileAtomically(m_path, root); written.isError()) {
        reportOnce("pxmenu: cannot save settings: " + written.error().message);
        return;
    }
    m_root = root.copy();
    m_identity = {};
    refreshLocked();
}

void PlistFileSettings::refreshLocked() {
    struct stat info {};
    if (::stat(m_path.c_str(), &info) != 0) {
        m_root = plist::Value::makeDictionary();
        m_identity = {};
        m_broken = false;
        return;
    }
    FileIdentity identity{info.st_dev, info.st_ino, info.st_size,
                          info.st_mtim.tv_sec * 1000000000LL + info.st_mtim.tv_nsec};
    if (identity != m_identity) loadLocked(identity);
}

void PlistFileSettings::loadLocked(const FileIdentity& identity) {
    m_identity = identity;
    auto parsed = plist::readFile(m_path);
    m_broken = parsed.isError() || !parsed.value().isDictionary();
    if (!m_broken) {
        m_root = parsed.releaseValue();
        return;
    }
    m_root = plist::Value::makeDictionary();
    std::string why = parsed.isError() ? parsed.error().message : "it does not hold a dictionary";
    reportOnce("pxmenu: the settings file " + m_path + " is damaged (" + why +
               "); using empty settings, and keeping the damaged file as " + m_path + ".broken");
}

void PlistFileSettings::moveBrokenFileAsideLocked() {
    std::string aside = m_path + ".broken";
    for (int n = 1; io::exists(aside); ++n)
        aside = m_path + ".broken-" + std::to_string(n);
    if (std::rename(m_path.c_str(), aside.c_str()) != 0)
        reportOnce("pxmenu: cannot move the damaged settings file aside to " + aside);
    m_broken = false;
}

void PlistFileSettings::reportOnce(const std::string& message) {
    if (m_reported) return;
    m_reported = true;
    std::fprintf(stderr, "%s\n", message.c_str());
}

} // namespace px::platform
