// The five list builders of the menu manager: stored dictionaries become menu items.
#include "actions/FileHash.h"
#include "config/ItemFields.h"
#include "config/MenuKeys.h"
#include "config/PXDefaultData.h"
#include "config/PXMenuManager.h"
#include "config/StoredFields.h"
#include "config/StoredLists.h"
#include "support/StandardPath.h"

#include <algorithm>
#include <array>

namespace px {

namespace {

// Walks the stored list (a damaged one is replaced by the factory list); a disabled entry is
// left out unless asked for.
template <typename CopyFields>
PXMenuItem::List buildList(const char* menuKey, bool includeDisabled, CopyFields copyFields) {
    PXMenuItem::List result;
    plist::Value stored = storedMenuList(menuKey);
    if (!stored.isArray()) return result;
    result.reserve(stored.array().size());
    for (const auto& entry : stored.array()) {
        if (!entry.isDictionary()) continue;
        auto item = PXMenuItem::create();
        item->disabled = fields::flag(entry, "disabled");
        if (item->disabled && !includeDisabled) continue;
        copyFields(*item, entry);
        result.push_back(std::move(item));
    }
    return result;
}

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

enum class Belongs { No, Yes };

// Rules 1 to 9 of the attribute table; answers whether one matched and whether the item
// joins the application list.
bool applyServiceAndHideRules(PXMenuItem& item, Belongs& belongs) {
    const std::string& key = item.key;
    if (key == "Terminal Window" || key == "Terminal To") {
        item.serve = "New Terminal at Folder";
        item.isNotNeedURL = true;
        if (key == "Terminal Window") belongs = Belongs::Yes;
    } else if (key == "Terminal Tab") {
        item.serve = "New Terminal Tab at Folder";
        item.isNotNeedURL = true;
    } else if (key == "iTerm2 Window" || key == "iTerm2 To") {
        item.serve = "New iTerm2 Window Here";
        item.isNotNeedURL = true;
        if (key == "iTerm2 Window") belongs = Belongs::Yes;
    } else if (key == "iTerm2 Tab") {
        item.serve = "New iTerm2 Tab Here";
        item.isNotNeedURL = true;
    } else if (item.isConvert()) {
        item.formats = convertFormats();
    } else if (key == "Hide Selected Files" || key == "Hide All Files") {
        item.isShowHideFile = true;
        item.command = "chflags hidden";
        item.isNeedSelectURL = key == "Hide Selected Files";
    } else if (key == "Unhide All Files") {
        item.isShowHideFile = true;
        item.command = "chflags nohidden";
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

// Rules 10 to 20; rule 21 (anything else) sets nothing.
void applyKindRules(PXMenuItem& item, const plist::Value& entry, Belongs& belongs) {
    if (filehash::isValid(item.appName)) {
        item.isNotNeedURL = true;
        belongs = Belongs::Yes;
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

bool isForeverKey(const std::string& key) {
    const auto& keys = PXDefaultData::foreverKeyArray();
    return std::find(keys.begin(), keys.end(), key) != keys.end();
}

} // namespace

PXMenuItem::List PXMenuManager::menuItemArray() {
    PXMenuItem::List apps;
    PXMenuItem::List result =
        buildList(menukey::kRightMenu, false, [&](PXMenuItem& item, const plist::Value& entry) {
            fields::copyStoredFields(item, entry, kMainFields);
            item.forever = isForeverKey(item.key);
            Belongs belongs = Belongs::No;
            if (!applyServiceAndHideRules(item, belongs)) applyKindRules(item, entry, belongs);
            if (belongs == Belongs::Yes) apps.push_back(item.shared_from_this());
        });
    sharedInstance().setBelongApps(std::move(apps));
    return result;
}

PXMenuItem::List PXMenuManager::newFileTemplateMenuArray(bool includeDisabled) {
    return buildList(menukey::kNewFile, includeDisabled,
                     [](PXMenuItem& item, const plist::Value& entry) {
                         fields::copyStoredFields(item, entry, kNewFileFields);
                     });
}

PXMenuItem::List PXMenuManager::folderIconMenuArray() {
    return buildList(menukey::kFolderIcon, false, [](PXMenuItem& item, const plist::Value& entry) {
        fields::copyStoredFields(item, entry, kFolderIconFields);
    });
}

PXMenuItem::List PXMenuManager::commonAppMenuArray() {
    return buildList(menukey::kCommonApp, false, [](PXMenuItem& item, const plist::Value& entry) {
        fields::copyStoredFields(item, entry, kCommonAppFields);
        item.appName = item.key;
    });
}

PXMenuItem::List PXMenuManager::commonPathMenuArray() {
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
