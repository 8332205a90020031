// Building the menu for one request: filters, titles, generated children and tags.
#include "extension/MenuBuilder.h"

#include "config/PXMenuManager.h"
#include "extension/MenuTag.h"
#include "extension/PXHelper.h"
#include "extension/UserTemplates.h"
#include "support/FileHash.h"
#include "support/Localization.h"
#include "support/PXFile.h"
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

std::string upperCased(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return std::toupper(c); });
    return text;
}

// What one build reads once: the request, its preferences and the selection's first item.
struct BuildState {
    const Request& request;
    const PXFile current;
    const std::size_t count;
    const PXMenuItem::List mainItems;
};

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
PXMenuItem::List targetChildren(const BuildState& state, bool withSubfolders) {
    PXMenuItem::List items = state.request.store().commonPathMenuArray();
    PXHelper helper(state.request, state.mainItems);
    for (const auto& child : items)
        if (withSubfolders)
            child->setChildren(child, helper.commomPathChildFolderItemWithPath(child->path));
    items.insert(items.begin(), headItem("Select Folder", "choose"));
    return items;
}

PXMenuItem::List commonPathChildren(const BuildState& state) {
    PXMenuItem::List items = state.request.store().commonPathMenuArray();
    PXHelper helper(state.request, state.mainItems);
    for (const auto& child : items)
        child->setChildren(child, helper.commomPathNextMenuWithPath(child->path));
    return items;
}

PXMenuItem::List folderIconChildren(const BuildState& state) {
    PXMenuItem::List items = state.request.store().folderIconMenuArray();
    if (filehash::hasCustomIcon(state.current.path)) {
        auto recover = headItem("Recover Icon", "recover");
        recover->displayName = localized("Recover");
        items.insert(items.begin(), recover);
    }
    return items;
}

bool isFilteredOut(const BuildState& state, const PXMenuItem& item) {
    const Request& request = state.request;
    const PXFile& current = state.current;
    const bool onItems = request.onItems();
    bool hasCutPaths = !item.cutPaths.empty();
    if (state.count == 0 && !item.isNotNeedURL) return true;
    if (onItems && item.key == "Hide All Files") return true;
    // The extension is worked out only for the few entries limited to some formats.
    if (item.isConvert() && !contains(item.formats, current.ext())) return true;
    if (item.isFileInfo() && (current.isFolder() || !request.onSingleItem())) return true;
    if (item.isCutPaste() && !onItems && !hasCutPaths) return true;
    if (item.isColorPicker() && onItems) return true;
    if (!item.formats.empty() && !contains(item.formats, current.ext())) return true;
    if (item.isNeedFolder && !current.isFolder()) return true;
    if (item.isNeedSelectURL && !onItems) return true;
    if (item.children && item.children->empty()) return true;
    if (item.disabled || !item.isValidParent(request.preferences())) return true;
    return !onItems && item.isCutPaste() && hasCutPaths &&
           current.path == parentFolder(item.cutPaths.front());
}

// The entry's title and icon name: cut or paste, lock or unlock follow the selection.
MenuEntry makeEntry(const BuildState& state, const PXMenuItem& item, std::size_t index,
                    bool withIcon) {
    MenuEntry entry;
    entry.key = item.key;
    entry.tag = static_cast<std::int64_t>(index + 1);
    std::string icon = item.icon;
    if (item.isCutPaste()) {
        bool paste = !state.request.onItems() && !item.cutPaths.empty();
        entry.title = localized(paste ? "Paste" : "Cut");
        icon = paste ? "paste" : "cut";
    } else if (item.isLockUnlock()) {
        bool locked = filehash::isLocked(state.current.path);
        entry.title = localized(locked ? "Unlock" : "Lock");
        icon = locked ? "unlock" : "lock";
    } else {
        entry.title = item.menuTitle();
    }
    if (!withIcon) return entry;
    if (icon == item.icon) {
        entry.icon = item.menuIcon();
    } else {
        PXMenuItem shown = item;
        shown.icon = icon;
        entry.icon = shown.menuIcon();
    }
    return entry;
}

PXMenuItem::List newFileChildren(const BuildState& state) {
    PXMenuItem::List templates;
    for (const auto& entry : state.request.store().newFileTemplateMenuArray(false))
        if (entry->isNewFileFromWindow() || state.count > 0) templates.push_back(entry);
    if (state.count > 0)
        for (auto& entry : UserTemplates::items())
            templates.push_back(std::move(entry));
    if (state.request.onItems() && state.count == 1 && !state.current.isFolder())
        templates.push_back(PXMenuItem::addToFileTemplate());
    return templates;
}

void fillChildren(const BuildState& state, const PXMenuItem::Ptr& item) {
    if (item->isFileInfo()) item->setChildren(item, digestChildren());
    if (item->isConvert())
        item->setChildren(item, convertChildren(state.current.ext(), state.count));
    if (item->isCommonPath())
        item->setChildren(item, commonPathChildren(state));
    else if (item->isCommonApp())
        item->setChildren(item, state.request.store().commonAppMenuArray());
    else if (item->isFolderIcon())
        item->setChildren(item, folderIconChildren(state));
    if (item->isMove() || item->isCopy() || item->isTerminalTo())
        item->setChildren(item, targetChildren(state, !item->isTerminalTo()));
    if (item->isNewFile()) item->setChildren(item, newFileChildren(state));
}

} // namespace

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

BuiltMenu buildMenu(const Request& request) {
    // One look at the settings file and the artwork folders for the whole menu.
    ReadScope scope;
    const auto& selection = request.selection();
    PXMenuItem::List items = request.store().menuItemArray();
    BuildState state{request, PXFile(selection.empty() ? std::string() : selection.front()),
                     selection.size(), items};
    auto& preferences = request.preferences();
    const bool topIcons = !preferences.boolForKey("pref check1");
    const bool settingsEntry = !preferences.boolForKey("pref check2");
    const bool submenuIcons = !preferences.boolForKey("pref check4");
    Menu menu;
    for (std::size_t i = 0; i < items.size(); ++i) {
        const auto& item = items[i];
        if (isFilteredOut(state, *item)) continue;
        MenuEntry entry = makeEntry(state, *item, i, topIcons);
        fillChildren(state, item);
        if (item->children) {
            if (settingsEntry) item->children->push_back(PXMenuItem::setItem());
            if (auto submenu =
                    submenuOf(item->children, menutag::topLevelText(entry.tag), submenuIcons))
                entry.children = std::move(*submenu);
        }
        menu.push_back(std::move(entry));
    }
    return {std::move(menu), std::move(items)};
}

} // namespace px
