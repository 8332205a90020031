#include "extension/UserTemplates.h"

#include "config/IconTheme.h"
#include "support/FileStamp.h"
#include "support/PathName.h"
#include "support/Xdg.h"

#include <algorithm>
#include <array>
#include <dirent.h>
#include <memory>
#include <mutex>
#include <string_view>
#include <sys/stat.h>
#include <vector>

namespace px {

namespace {

struct DirCloser {
    void operator()(DIR* dir) const { ::closedir(dir); }
};

constexpr std::array<std::string_view, 4> kReservedKeys{
    "New File From Window", "Add to File Template", "Go Set", "Sep Line"};

bool isOffered(const std::string& folder, const std::string& name) {
    if (name.empty() || name.front() == '.' || name.back() == '~') return false;
    if (std::find(kReservedKeys.begin(), kReservedKeys.end(), name) != kReservedKeys.end())
        return false;
    struct stat info {};
    return ::stat((folder + "/" + name).c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

std::vector<std::string> offeredNames(const std::string& folder) {
    std::vector<std::string> names;
    std::unique_ptr<DIR, DirCloser> dir(::opendir(folder.c_str()));
    if (!dir) return names;
    std::size_t scanned = 0;
    while (const dirent* entry = ::readdir(dir.get())) {
        if (++scanned > UserTemplates::kMaxScanned) break;
        if (isOffered(folder, entry->d_name)) names.emplace_back(entry->d_name);
    }
    std::sort(names.begin(), names.end());
    if (names.size() > UserTemplates::kMaxItems) names.resize(UserTemplates::kMaxItems);
    return names;
}

// The offered names of the folder last listed, kept while the folder's stamp stays the same:
// the menu asks for them on every build, and the folder rarely changes. (A symbolic link whose
// target turns from a file into something else goes unnoticed until the folder changes.)
class ListingCache {
  public:
    std::vector<std::string> namesIn(const std::string& folder) {
        std::lock_guard guard(m_mutex);
        const long long now = io::FileStamp::nowNanos();
        io::FileStamp stamp = io::FileStamp::of(folder);
        if (m_settled && folder == m_folder && stamp == m_stamp) return m_names;
        m_folder = folder;
        m_stamp = stamp;
        m_settled = stamp.isSettledAt(now);
        m_names = stamp.exists() ? offeredNames(folder) : std::vector<std::string>{};
        return m_names;
    }

  private:
    std::mutex m_mutex;
    std::string m_folder;
    io::FileStamp m_stamp;
    bool m_settled = false;
    std::vector<std::string> m_names;
};

std::vector<std::string> cachedOfferedNames(const std::string& folder) {
    static ListingCache* cache = new ListingCache();
    return cache->namesIn(folder);
}

PXMenuItem::Ptr itemFor(const std::string& folder, const std::string& name) {
    auto item = PXMenuItem::create(name);
    item->ext = path::pathExtension(name);
    item->templatePath = folder + "/" + name;
    item->displayName = path::deletingPathExtension(name);
    item->fileName = item->displayName;
    const std::string lower = path::lowercased(item->ext);
    item->icon = iconReferenceForResource(lower) ? lower : std::string("file");
    return item;
}

} // namespace

std::string UserTemplates::folder() {
    std::string templates = xdg::userDirectory("TEMPLATES");
    while (templates.size() > 1 && templates.back() == '/')
        templates.pop_back();
    std::string home = xdg::homeDirectory();
    while (home.size() > 1 && home.back() == '/')
        home.pop_back();
    return templates == home ? std::string() : templates;
}

PXMenuItem::List UserTemplates::items(const std::string& folder) {
    PXMenuItem::List result;
    if (folder.empty()) return result;
    for (const auto& name : cachedOfferedNames(folder))
        result.push_back(itemFor(folder, name));
    return result;
}

} // namespace px
