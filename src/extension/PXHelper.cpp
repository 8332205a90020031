#include "extension/PXHelper.h"

#include "config/MenuKeys.h"
#include "config/PXMenuManager.h"
#include "extension/PXCheckPermit.h"
#include "support/FileIO.h"
#include "support/LocalMounts.h"
#include "support/Localization.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <vector>

namespace px {

namespace {

PXMenuItem::Ptr fixedItem(const char* key, const char* icon) {
    auto item = PXMenuItem::create(key);
    item->icon = icon;
    return item;
}

PXMenuItem::Ptr entryItem(const std::string& folder, const std::string& name) {
    std::string path = folder == "/" ? "/" + name : folder + "/" + name;
    auto item = PXMenuItem::create(path);
    item->path = path;
    item->displayName = name;
    return item;
}

bool isFolderEntry(const std::string& folder, const dirent64& entry) {
    if (entry.d_type == DT_DIR) return true;
    if (entry.d_type != DT_UNKNOWN) return false;
    struct stat info {};
    std::string path = folder + "/" + entry.d_name;
    return ::lstat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

// Reads a folder's entries in batches that start small and grow. readdir asks the kernel for
// 32 KiB of entries at once, and ext4 sorts every entry it hands out by hash: the first read
// of a folder of ten thousand entries then costs far more than the few dozen a submenu shows.
class FolderListing {
  public:
    explicit FolderListing(const std::string& folder)
        : m_fd(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {}

    // The next entry; null at the end or on an error.
    const dirent64* next() {
        if (m_offset >= m_length && !refill()) return nullptr;
        const auto* entry = reinterpret_cast<const dirent64*>(bytes() + m_offset);
        m_offset += entry->d_reclen;
        return entry;
    }

  private:
    static constexpr std::size_t kFirstBatch = 4096, kLargestBatch = 32768;

    const char* bytes() const { return reinterpret_cast<const char*>(m_buffer.data()); }

    bool refill() {
        if (!m_fd.valid()) return false;
        std::size_t size =
            m_buffer.empty() ? kFirstBatch : std::min(2 * m_buffer.size() * 8, kLargestBatch);
        m_buffer.resize(size / 8); // 8-byte words keep every record aligned
        ssize_t count = ::getdents64(m_fd.get(), m_buffer.data(), size);
        if (count <= 0) return false;
        m_length = static_cast<std::size_t>(count);
        m_offset = 0;
        return true;
    }

    io::FileDescriptor m_fd;
    std::vector<std::uint64_t> m_buffer;
    std::size_t m_length = 0;
    std::size_t m_offset = 0;
};

// Calls `visit` for each visible entry in listing order until it answers false. A menu request
// lists several folders, in the file manager's main thread: each listing stops after a bounded
// number of entries or time, and folders on network shares are not listed at all.
template <typename Visit> void forEachVisibleEntry(const std::string& folder, Visit visit) {
    if (!mounts::isOnLocalMount(folder)) return;
    const auto deadline = std::chrono::steady_clock::now() + PXHelper::kListingTimeBudget;
    FolderListing listing(folder);
    std::size_t seen = 0;
    while (const dirent64* entry = listing.next()) {
        if (entry->d_name[0] != '.' && !visit(*entry)) return;
        if (++seen % 64 != 0) continue;
        if (seen >= PXHelper::kMaxListedEntries || std::chrono::steady_clock::now() > deadline)
            return;
    }
}

PXMenuItem::List authorizeOnly() {
    return {PXMenuItem::create("To Authorize")};
}

void append(PXMenuItem::List& list, const PXMenuItem::List& more) {
    list.insert(list.end(), more.begin(), more.end());
}

} // namespace

PXMenuItem::List PXHelper::nextTypeSubMenuWithPath(const std::string& path, std::size_t maxCount) {
    PXMenuItem::List items;
    forEachVisibleEntry(path, [&](const dirent64& entry) {
        items.push_back(entryItem(path, entry.d_name));
        if (items.size() < maxCount) return true;
        items.push_back(fixedItem("More Files", "more"));
        return false;
    });
    return items;
}

PXMenuItem::List PXHelper::nextTypeAppMenu() const {
    PXMenuItem::List items = PXMenuManager::belongAppMenuArray(m_mainItems);
    append(items, m_request.store().commonAppMenuArray());
    return items;
}

PXMenuItem::List PXHelper::commomPathNextMenuWithPath(const std::string& path) const {
    if (!mounts::isOnLocalMount(path)) return {};
    if (!m_request.permits().checkPermitWithPath(path)) return authorizeOnly();
    PXMenuItem::List items;
    switch (m_request.preferences().integerForKey(menukey::kCommonPathNextMenu)) {
    case 2:
        items = nextTypeAppMenu();
        break;
    case 3:
        items = nextTypeSubMenuWithPath(path, 20);
        break;
    case 4:
        items = nextTypeSubMenuWithPath(path, 10);
        items.push_back(PXMenuItem::sepLineItem());
        append(items, nextTypeAppMenu());
        break;
    default:
        break;
    }
    if (!items.empty()) items.insert(items.begin(), fixedItem("Show in Finder", "showfinder"));
    return items;
}

PXMenuItem::List PXHelper::commomPathChildFolderItemWithPath(const std::string& path) const {
    if (!mounts::isOnLocalMount(path)) return {};
    if (!m_request.permits().checkPermitWithPath(path)) return authorizeOnly();
    PXMenuItem::List items;
    forEachVisibleEntry(path, [&](const dirent64& entry) {
        if (!isFolderEntry(path, entry)) return true;
        items.push_back(entryItem(path, entry.d_name));
        if (items.size() < kMaxChildFolders) return true;
        auto tip = PXMenuItem::sepLineItem();
        tip->displayName = localizedFormat("Only Show Folder Tip", kMaxChildFolders);
        items.push_back(tip);
        return false;
    });
    if (!items.empty()) items.insert(items.begin(), fixedItem("Current Directory", "showfinder"));
    return items;
}

} // namespace px
