#include "platform/linux/PlistFileSettings.h"

#include "plist/PlistCodec.h"
#include "support/FileIO.h"
#include "support/ReadScope.h"

#include <cstdio>

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
    refreshLocked(Check::OncePerScope);
    return m_root.get(key);
}

plist::Value PlistFileSettings::snapshot() {
    std::lock_guard guard(m_mutex);
    refreshLocked(Check::OncePerScope);
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
    refreshLocked(Check::Always); // what other processes wrote must not be lost
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
    m_stamp = {};
    refreshLocked(Check::Always);
}

void PlistFileSettings::refreshLocked(Check check) {
    const std::uint64_t scope = ReadScope::current();
    if (check == Check::OncePerScope && ReadScope::holds(m_checkedInScope)) return;
    m_checkedInScope = scope;
    io::FileStamp stamp = io::FileStamp::of(m_path);
    if (!stamp.exists()) {
        m_root = plist::Value::makeDictionary();
        m_stamp = {};
        m_broken = false;
        return;
    }
    if (stamp != m_stamp) loadLocked(stamp);
}

void PlistFileSettings::loadLocked(const io::FileStamp& stamp) {
    m_stamp = stamp;
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
