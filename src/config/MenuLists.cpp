// The five list builders of the menu manager: stored dictionaries become menu items.
#include "config/MenuKeys.h"
#include "config/PXDefaultData.h"
#include "config/PXMenuManager.h"
#include "config/StoredFields.h"
#include "config/StoredLists.h"
#include "plist/ItemFields.h"
#include "support/FileHash.h"
#include "support/StandardPath.h"

#include <algorithm>
#include <array>

namespace px {

namespace {

using fields::StoredField;

// What every list but the common paths shows of an entry; the other lists add their own.
constexpr auto kFolderIconFields = std::to_array<StoredField>({
    {"displayName", &PXMenuItem::displayName},
    {"icon", &PXMenuItem::icon},
    {"iconPath", &PXMenuItem::iconPath},
    {"key", &PXMenuItem::key},
});

constexpr auto kTemplateFields = std::to_array<StoredField>({
    {"ext", &PXMenuItem::ext},
    {"fileName", &PXMenuItem::fileName},
    {"special", nullptr, &PXMenuItem::isSpecialFile},
    {"templatePath", &PXMenuItem::templatePath},
    {"toMainMenu", nullptr, &PXMenuItem::isAddToMainMenu},
});
constexpr auto kNewFileFields = fields::joinFields(kFolderIconFields, kTemplateFields);

// The main list's entries carry the template fields too: a template may be shown there.
constexpr auto kCommandFields = std::to_array<StoredField>({
    {"appName", &PXMenuItem::appName},
    {"disabledAuth", nullptr, &PXMenuItem::disabledAuth},
    {"disabledOpenPath", nullptr, &PXMenuItem::disabledOpenPath},
    {"mainMenuNewFile", nullptr, &PXMenuItem::isMainMenuNewFile},
});
constexpr auto kMainFields = fields::joinFields(kNewFileFields, kCommandFields);

constexpr auto kApplicationFields = std::to_array<StoredField>({
    {"disabledOpenPath", nullptr, &PXMenuItem::disabledOpenPath},
    {"toMainMenu", nullptr, &PXMenuItem::isAddToMainMenu},
});
constexpr auto kCommonAppFields = fields::joinFields(kFolderIconFields, kApplicationFields);

static_assert(fields::isSortedByName(kFolderIconFields) &&
              fields::isSortedByName(kTemplateFields) && fields::isSortedByName(kCommandFields) &&
              fields::isSortedByName(kApplicationFields));
static_assert(fields::isSortedByName(kNewFileFields) && fields::isSortedByName(kMainFields) &&
              fields::isSortedByName(kCommonAppFields));

const std::vector<std::string>& convertFormats() {
    static const std::vector<std::string> formats{
        "icns", "png",  "tiff", "jpg", "jpeg", "jpe", "jp2",  "bmp", "gif", "svg",
        "fax",  "wbmp", "webp", "pic", "tif",  "ico", "jfif", "rp",  "net", "pdf"};
    return formats;
}

// The terminal services and the hiding commands that an entry's key implies; answers whether
// one matched.
bool applyServiceAndHideRules(PXMenuItem& item) {
    const std::string& key = item.key;
    if (key == "Terminal Window" || key == "Terminal To") {
        item.serve = "New Terminal at Folder";
        item.isNotNeedURL = true;
    } else if (key == "Terminal Tab") {
        item.serve = "New Terminal Tab at Folder";
        item.isNotNeedURL = true;
    } else if (key == "iTerm2 Window" || key == "iTerm2 To") {
        item.serve = "New iTerm2 Window Here";
        item.isNotNeedURL = true;
    } else if (key == "iTerm2 Tab") {
        item.serve = "New iTerm2 Tab Here";
        item.isNotNeedURL = true;
    } else if (item.isConvert()) {
        item.formats = convertFormats();
    } else if (key == "Hide Selected Files" || key == "Hide All Files") {
        item.isShowHideFile = true;
        item.visibility = Visibility::Hidden;
        item.isNeedSelectURL = key == "Hide Selected Files";
    } else if (key == "Unhide All Files") {
        item.isShowHideFile = true;
        item.visibility = Visibility::Shown;
    } else if (key == "System Hide Files") {
        item.command = "gsettings set org.gtk.gtk4.Settings.FileChooser show-hidden %@";
        item.isNotNeedURL = true;
    } else if (item.isLockUnlock()) {
        item.isNeedSelectURL = true;
    } else {
        return false;
    }
    return true;
}

// What the other kinds of entry need: a selection, a folder, a format; other keys set nothing.
void applyKindRules(PXMenuItem& item, const plist::Value& entry) {
    if (filehash::isValid(item.appName)) {
        item.isNotNeedURL = true;
    } else if (item.isCutPaste()) {
        item.cutPaths = fields::strings(entry, "cutPaths");
    } else if (item.isFolderIcon() || item.isUnembedFolder()) {
        item.isNeedFolder = true;
        item.isNeedSelectURL = true;
    } else if (item.isCopy() || item.isMove() || item.isCompress() || item.key == "Delete" ||
               item.isEmbedFolder() || item.isExtractIcon()) {
        item.isNeedSelectURL = true;
    } else if (item.isCommonApp() || item.isCommonPath() || item.isNewFile()) {
        item.isNotNeedURL = true;
    } else if (item.isColorPicker()) {
        item.isNotNeedURL = true;
        item.disabledAuth = true;
    } else if (item.isExecuteScript()) {
        item.isNeedSelectURL = true;
        item.formats = {"sh", "scpt"};
    }
}

// Terminal windows, and entries naming an application that their key does not make a service
// or a hiding command.
bool joinsApplicationList(const PXMenuItem& item) {
    if (item.key == "Terminal Window" || item.key == "iTerm2 Window") return true;
    if (!filehash::isValid(item.appName)) return false;
    PXMenuItem scratch;
    scratch.key = item.key;
    scratch.resolveKind();
    return !applyServiceAndHideRules(scratch);
}

bool isForeverKey(const std::string& key) {
    const auto& keys = PXDefaultData::foreverKeyArray();
    return std::find(keys.begin(), keys.end(), key) != keys.end();
}

} // namespace

// Walks the stored list (a damaged one is replaced by the factory list); a disabled entry is
// left out unless asked for.
PXMenuItem::List PXMenuManager::buildList(
    const char* menuKey, bool includeDisabled,
    const std::function<void(PXMenuItem&, const plist::Value&)>& copyFields) const {
    PXMenuItem::List result;
    plist::Value stored = storedMenuList(*this, menuKey);
    if (!stored.isArray()) return result;
    result.reserve(stored.array().size());
    for (const auto& entry : stored.array()) {
        if (!entry.isDictionary()) continue;
        auto item = PXMenuItem::create();
        item->disabled = fields::flag(entry, "disabled");
        if (item->disabled && !includeDisabled) continue;
        copyFields(*item, entry);
        item->resolveKind();
        result.push_back(std::move(item));
    }
    return result;
}

PXMenuItem::List PXMenuManager::menuItemArray() const {
    return buildList(menukey::kRightMenu, false, [](PXMenuItem& item, const plist::Value& entry) {
        fields::copyStoredFields(item, entry, kMainFields);
        item.resolveKind();
        item.forever = isForeverKey(item.key);
        if (!applyServiceAndHideRules(item)) applyKindRules(item, entry);
    });
}

PXMenuItem::List PXMenuManager::belongAppMenuArray(const PXMenuItem::List& mainItems) {
    PXMenuItem::List apps;
    for (const auto& item : mainItems)
        if (joinsApplicationList(*item)) apps.push_back(item);
    return apps;
}

PXMenuItem::List PXMenuManager::newFileTemplateMenuArray(bool includeDisabled) const {
    return buildList(menukey::kNewFile, includeDisabled,
                     [](PXMenuItem& item, const plist::Value& entry) {
                         fields::copyStoredFields(item, entry, kNewFileFields);
                     });
}

PXMenuItem::List PXMenuManager::folderIconMenuArray() const {
    return buildList(menukey::kFolderIcon, false, [](PXMenuItem& item, const plist::Value& entry) {
        fields::copyStoredFields(item, entry, kFolderIconFields);
    });
}

PXMenuItem::List PXMenuManager::commonAppMenuArray() const {
    return buildList(menukey::kCommonApp, false, [](PXMenuItem& item, const plist::Value& entry) {
        fields::copyStoredFields(item, entry, kCommonAppFields);
        item.appName = item.key;
    });
}

PXMenuItem::List PXMenuManager::commonPathMenuArray() const {
    return buildList(menukey::kCommonPath, false, [](PXMenuItem& item, const plist::Value& entry) {
        item.icon = "folder";
        item.iconPath = fields::string(entry, "iconPath");
        item.isAddToMainMenu = fields::flag(entry, "toMainMenu");
        item.displayName = fields::string(entry, "displayName");
        item.path = standardizePath(fields::string(entry, "path"));
        item.key = item.path;
    });
}

} // namespace px
