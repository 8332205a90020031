#include "extension/PXHelper.h"

#include "config/Localization.h"
#include "config/MenuKeys.h"
#include "config/PXMenuManager.h"
#include "support/PXCheckPermit.h"

#include <dirent.h>
#include <memory>
#include <sys/stat.h>

namespace px {

namespace {

struct DirCloser {
    void operator()(DIR* dir) const { ::closedir(dir); }
};

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

bool isFolderEntry(const std::string& folder, const dirent& entry) {
    if (entry.d_type == DT_DIR) return true;
    if (entry.d_type != DT_UNKNOWN) return false;
    struct stat info {};
    std::string path = folder + "/" + entry.d_name;
    return ::lstat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

// Calls `visit` for each visible entry in listing order until it answers false.
template <typename Visit> void forEachVisibleEntry(const std::string& folder, Visit visit) {
    std::unique_ptr<DIR, DirCloser> dir(::opendir(folder.c_str()));
    if (!dir) return;
    while (const dirent* entry = ::readdir(dir.get()))
        if (entry->d_name[0] != '.' && !visit(*entry)) return;
}

PXMenuItem::List authorizeOnly() { return {PXMenuItem::create("To Authorize")}; }

void append(PXMenuItem::List& list, const PXMenuItem::List& more) {
    list.insert(list.end(), more.begin(), more.end());
}

} // namespace

PXMenuItem::List PXHelper::_nextTypeSubMenuWithPath(const std::string& path, std::size_t maxCount) {
    PXMenuItem::List items;
    forEachVisibleEntry(path, [&](const dirent& entry) {
        items.push_back(entryItem(path, entry.d_name));
        if (items.size() < maxCount) return true;
        items.push_back(fixedItem("More Files", "more"));
        return false;
    });
    return items;
}

PXMenuItem::List PXHelper::_nextTypeAppMenu() {
    PXMenuItem::List items = PXMenuManager::belongAppMenuArray();
    append(items, PXMenuManager::commonAppMenuArray());
    return items;
}

PXMenuItem::List PXHelper::commomPathNextMenuWithPath(const std::string& path) {
    if (!PXCheckPermit::checkPermitWithPath(path)) return authorizeOnly();
    PXMenuItem::List items;
    switch (PXMenuManager::sharedDefaults().integerForKey(menukey::kCommonPathNextMenu)) {
    case 2:
        items = _nextTypeAppMenu();
        break;
    case 3:
        items = _nextTypeSubMenuWithPath(path, 20);
        break;
    case 4:
        items = _nextTypeSubMenuWithPath(path, 10);
        items.push_back(PXMenuItem::sepLineItem());
        append(items, _nextTypeAppMenu());
        break;
    default:
        break;
    }
    if (!items.empty()) items.insert(items.begin(), fixedItem("Show in Finder", "showfinder"));
    return items;
}

PXMenuItem::List PXHelper::commomPathChildFolderItemWithPath(const std::string& path) {
    if (!PXCheckPermit::checkPermitWithPath(path)) return authorizeOnly();
    PXMenuItem::List items;
    forEachVisibleEntry(path, [&](const dirent& entry) {
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
