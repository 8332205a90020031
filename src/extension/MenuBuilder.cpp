// Building the menu for one request: filters, titles, generated children and tags.
#include "actions/FileHash.h"
#include "config/Localization.h"
#include "config/PXMenuManager.h"
#include "extension/FinderSync.h"
#include "extension/MenuTag.h"
#include "extension/PXHelper.h"
#include "extension/UserTemplates.h"
#include "support/ReadScope.h"

#include <algorithm>
#include <array>

namespace px {

namespace {

bool contains(const std::vector<std::string>& list, const std::string& value) {
    return std::find(list.begin(), list.end(), value) != list.end();
}

std::string parentFolder(const std::string& path) {
    auto slash = path.rfind('/');
    if (slash == std::string::npos) return "";
    return slash == 0 ? "/" : path.substr(0, slash);
}

bool preference(const char* key) {
    return PXMenuManager::sharedDefaults().boolForKey(key);
}

std::string upperCased(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return std::toupper(c); });
    return text;
}

PXMenuItem::List digestChildren() {
    PXMenuItem::List items;
    for (const char* key : {"MD5", "SHA1", "SHA256", "SHA512"})
        items.push_back(PXMenuItem::create(key));
    return items;
}

PXMenuItem::List convertChildren(const std::string& ext, std::size_t count) {
    static constexpr std::array<const char*, 12> targets{"AppIcon.icns",
                                                         "OSX AppIconset",
                                                         "iOS AppIconset",
                                                         "iWatch AppIconset",
                                                         "Android AppIconset",
                                                         "PNG",
                                                         "JPEG",
                                                         "JP2",
                                                         "TIFF",
                                                         "BMP",
                                                         "GIF",
                                                         "PDF"};
    std::string upper = upperCased(ext);
    PXMenuItem::List items;
    for (const char* target : targets) {
        std::string name = target;
        bool merge = name == "PDF" && count > 1;
        if (!merge && name.find(upper) != std::string::npos) continue;
        auto item = PXMenuItem::create(name);
        if (merge) item->displayName = localized("Merge to PDF");
        items.push_back(item);
    }
    return items;
}

PXMenuItem::Ptr headItem(const char* key, const char* icon) {
    auto item = PXMenuItem::create(key);
    item->icon = icon;
    return item;
}

// Common paths as targets; copy and move list each path's subfolders beneath it.
PXMenuItem::List targetChildren(bool withSubfolders) {
    PXMenuItem::List items = PXMenuManager::commonPathMenuArray();
    for (const auto& child : items)
        if (withSubfolders)
            child->setChildren(child, PXHelper::commomPathChildFolderItemWithPath(child->path));
    items.insert(items.begin(), headItem("Select Folder", "choose"));
    return items;
}

PXMenuItem::List commonPathChildren() {
    PXMenuItem::List items = PXMenuManager::commonPathMenuArray();
    for (const auto& child : items)
        child->setChildren(child, PXHelper::commomPathNextMenuWithPath(child->path));
    return items;
}

PXMenuItem::List folderIconChildren(const PXFile& current) {
    PXMenuItem::List items = PXMenuManager::folderIconMenuArray();
    if (filehash::hasCustomIcon(current.path)) {
        auto recover = headItem("Recover Icon", "recover");
        recover->displayName = localized("Recover");
        items.insert(items.begin(), recover);
    }
    return items;
}

// The submenu of generated or stored children, tagged below `parentTag`.
std::optional<Menu> submenuOf(const std::optional<PXMenuItem::List>& children,
                              const std::string& parentTag, bool icons) {
    if (!children || children->empty()) return std::nullopt;
    Menu menu;
    for (std::size_t j = 0; j < children->size(); ++j) {
        const auto& child = (*children)[j];
        if (child->disabled || child->isAddToMainMenu) continue;
        MenuEntry entry;
        entry.title = child->menuTitle();
        entry.key = child->key;
        if (child->isSepLine()) {
            entry.separator = true;
            entry.enabled = false;
            menu.push_back(std::move(entry));
            continue;
        }
        if (icons) entry.icon = child->menuIcon();
        std::string tagText = menutag::childText(parentTag, j);
        entry.tag = menutag::toTag(tagText);
        if (auto submenu = submenuOf(child->children, tagText, icons))
            entry.children = std::move(*submenu);
        menu.push_back(std::move(entry));
    }
    return menu;
}

} // namespace

bool FinderSync::isFilteredOut(const PXMenuItem& item, const PXFile& current, std::size_t count) {
    bool hasCutPaths = !item.cutPaths.empty();
    if (count == 0 && !item.isNotNeedURL) return true;
    if (isSelectURL && item.key == "Hide All Files") return true;
    // The extension is worked out only for the few entries limited to some formats.
    if (item.isConvert() && !contains(item.formats, current.ext())) return true;
    if (item.isFileInfo() && (current.isFolder() || !isSelectSingleURL())) return true;
    if (item.isCutPaste() && !isSelectURL && !hasCutPaths) return true;
    if (item.isColorPicker() && isSelectURL) return true;
    if (!item.formats.empty() && !contains(item.formats, current.ext())) return true;
    if (item.isNeedFolder && !current.isFolder()) return true;
    if (item.isNeedSelectURL && !isSelectURL) return true;
    if (item.children && item.children->empty()) return true;
    if (item.disabled || !item.isValidParent()) return true;
    return !isSelectURL && item.isCutPaste() && hasCutPaths &&
           current.path == parentFolder(item.cutPaths.front());
}

MenuEntry FinderSync::makeEntry(const PXMenuItem::Ptr& item, std::size_t index,
                                const PXFile& current, std::size_t) {
    MenuEntry entry;
    entry.key = item->key;
    entry.tag = static_cast<std::int64_t>(index + 1);
    if (item->isCutPaste()) {
        bool paste = !isSelectURL && !item->cutPaths.empty();
        entry.title = localized(paste ? "Paste" : "Cut");
        item->icon = paste ? "paste" : "cut";
    } else if (item->isLockUnlock()) {
        bool locked = filehash::isLocked(current.path);
        entry.title = localized(locked ? "Unlock" : "Lock");
        item->icon = locked ? "unlock" : "lock";
    } else {
        entry.title = item->menuTitle();
    }
    return entry;
}

void FinderSync::fillChildren(const PXMenuItem::Ptr& item, const PXFile& current,
                              std::size_t count) {
    if (item->isFileInfo()) item->setChildren(item, digestChildren());
    if (item->isConvert()) item->setChildren(item, convertChildren(current.ext(), count));
    if (item->isCommonPath())
        item->setChildren(item, commonPathChildren());
    else if (item->isCommonApp())
        item->setChildren(item, PXMenuManager::commonAppMenuArray());
    else if (item->isFolderIcon())
        item->setChildren(item, folderIconChildren(current));
    if (item->isMove() || item->isCopy() || item->isTerminalTo())
        item->setChildren(item, targetChildren(!item->isTerminalTo()));
    if (!item->isNewFile()) return;
    PXMenuItem::List templates;
    for (const auto& entry : PXMenuManager::newFileTemplateMenuArray(false))
        if (entry->isNewFileFromWindow() || count > 0) templates.push_back(entry);
    if (count > 0)
        for (auto& entry : UserTemplates::items())
            templates.push_back(std::move(entry));
    if (isSelectURL && count == 1 && !current.isFolder())
        templates.push_back(PXMenuItem::addToFileTemplate());
    item->setChildren(item, std::move(templates));
}

Menu FinderSync::menuForMenuKind(MenuKind kind) {
    // One look at the settings file and the artwork folders for the whole menu.
    ReadScope scope;
    selectURLsCache.reset();
    const auto& selection = selectURLs();
    std::size_t count = selection.size();
    if (count > 0) isSelectURL = kind == MenuKind::ContextualItems;
    PXFile current(count > 0 ? selection.front() : std::string());
    rightMenuArray = PXMenuManager::menuItemArray();
    const bool topIcons = !preference("pref check1");
    const bool settingsEntry = !preference("pref check2");
    const bool submenuIcons = !preference("pref check4");
    Menu menu;
    for (std::size_t i = 0; i < rightMenuArray->size(); ++i) {
        const auto& item = (*rightMenuArray)[i];
        if (isFilteredOut(*item, current, count)) continue;
        MenuEntry entry = makeEntry(item, i, current, count);
        if (topIcons) entry.icon = item->menuIcon();
        fillChildren(item, current, count);
        if (item->children) {
            if (settingsEntry) item->children->push_back(PXMenuItem::setItem());
            if (auto submenu =
                    submenuOf(item->children, menutag::topLevelText(entry.tag), submenuIcons))
                entry.children = std::move(*submenu);
        }
        menu.push_back(std::move(entry));
    }
    return menu;
}

std::optional<Menu>
FinderSync::getSubMenuWithChildren(const std::optional<PXMenuItem::List>& children,
                                   const std::string& parentTag) {
    return submenuOf(children, parentTag, !preference("pref check4"));
}

} // namespace px
