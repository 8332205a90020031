#include "actions/TemplateAdding.h"

#include "actions/FileIcon.h"
#include "actions/NewFile.h"
#include "config/MenuKeys.h"
#include "config/PXMenuManager.h"
#include "support/FileIO.h"
#include "support/PXFile.h"

#include <iostream>

namespace px::newfile {

namespace {

// The template entry for a copied item, with "iconPath" only when an icon was saved.
plist::Value templateEntry(const std::string& key, const PXFile& source,
                           const std::string& iconPath, const std::string& templatePath) {
    plist::Dictionary entry{{"key", plist::Value(key)},
                            {"ext", plist::Value(source.ext())},
                            {"displayName", plist::Value(source.name())},
                            {"templatePath", plist::Value(templatePath)}};
    if (!iconPath.empty()) entry.emplace("iconPath", plist::Value(iconPath));
    return plist::Value::makeDictionary(std::move(entry));
}

// The icon beside the template as <key>.png; empty when no icon could be drawn.
std::string saveTemplateIcon(const PXFile& source, const std::string& templates,
                             const std::string& key) {
    std::string iconPath = templates + "/" + key + ".png";
    if (fileicon::saveIconPNG(source.path, iconPath, kTemplateIconSize)) return iconPath;
    std::cerr << "pxmenu: no icon could be drawn for " << source.path
              << "; the template has none\n";
    return {};
}

} // namespace

ErrorOr<plist::Value> addFileTemplate(const PXMenuManager& store, const std::string& sourcePath) {
    if (sourcePath.empty()) return Error{"no item to add as a template", EINVAL};
    const PXFile source(sourcePath);
    const std::string key = uuid();
    const std::string templates = store.fileTemplateFolder();
    TRY(io::makeDirectories(templates));
    TRY(creation::copyItem(source.path, templates + "/" + key, creation::Existing::Keep));
    const std::string iconPath = saveTemplateIcon(source, templates, key);
    plist::Value entry = templateEntry(key, source, iconPath, templates + "/" + key);
    store.addMenuKey(menukey::kNewFile, entry, false);
    return entry;
}

} // namespace px::newfile
