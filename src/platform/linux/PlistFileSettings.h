#pragma once

#include "platform/Settings.h"
#include "support/FileStamp.h"

#include <cstdint>
#include <mutex>

namespace px::platform {

// A settings suite kept in one XML property-list file. Reads reload only when the file
// changed: a warm read costs one stat, and inside a ReadScope only the first read does. Every
// write re-reads the file under an advisory lock, changes the key and replaces the file
// atomically, so no key written by another process is lost. A file that cannot be parsed is
// reported once, read as empty, and moved aside to "<name>.broken" (never over an earlier one)
// before anything is written over it.
class PlistFileSettings final : public Settings {
  public:
    explicit PlistFileSettings(std::string path);

    plist::Value objectForKey(std::string_view key) override;
    void setObject(const std::string& key, plist::Value value) override;
    void modify(const std::string& key,
                const std::function<plist::Value(const plist::Value&)>& change) override;

    const std::string& path() const { return m_path; }
    // The whole suite as it is on disk now.
    plist::Value snapshot();

  private:
    enum class Check { OncePerScope, Always };

    void refreshLocked(Check check);
    void loadLocked(const io::FileStamp& stamp);
    void moveBrokenFileAsideLocked();
    void reportOnce(const std::string& message);

    std::string m_path;
    std::mutex m_mutex;
    plist::Value m_root;
    io::FileStamp m_stamp;
    std::uint64_t m_checkedInScope = 0;
    bool m_broken = false;
    bool m_reported = false;
};

} // namespace px::platform
