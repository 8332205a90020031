#pragma once

#include "platform/Settings.h"
#include "support/FileStamp.h"

#include <cstdint>
#include <functional>
#include <mutex>

namespace px::platform {

// A settings suite kept in one XML property-list file. Reads reload only when the file
// changed: a warm read costs one stat, and inside a ReadScope only the first read does. Every
// write re-reads the file under an advisory lock, changes the key and replaces the file
// atomically, so no key written by another process is lost. A file that cannot be parsed (or
// a folder in its place) is moved aside at once to "<name>.broken" (a free "<name>.broken-N"
// when that is taken, never over an earlier one), reported once, and the suite starts again
// from `restore`, which writes the factory state into the now empty suite.
class PlistFileSettings final : public Settings {
  public:
    using Restore = std::function<void(Settings&)>;
    explicit PlistFileSettings(std::string path, Restore restore = {});

    plist::Value objectForKey(std::string_view key) override;
    void setObject(const std::string& key, plist::Value value) override;
    void modify(const std::string& key,
                const std::function<plist::Value(const plist::Value&)>& change) override;
    std::optional<std::string> keepDamagedCopy(const std::string& why) override;

    const std::string& path() const { return m_path; }
    // The whole suite as it is on disk now.
    plist::Value snapshot();

  private:
    enum class Check { OncePerScope, Always };

    void refreshLocked(Check check);
    void loadLocked(const io::FileStamp& stamp);
    void setDamagedFileAsideLocked(const std::string& why);
    void restoreIfDamaged();
    void reportOnce(const std::string& message);

    std::string m_path;
    Restore m_restore;
    std::mutex m_mutex;
    plist::Value m_root;
    io::FileStamp m_stamp;
    std::uint64_t m_checkedInScope = 0;
    bool m_restorePending = false;
    bool m_restoring = false;
    bool m_holdingFileLock = false;
    bool m_reported = false;
};

} // namespace px::platform
