#include "config/PXMenuItem.h"

#include "config/IconTheme.h"
#include "support/FileHash.h"
#include "support/Localization.h"
#include "support/PXFile.h"

#include <unistd.h>

namespace px {

ItemKind itemKindForKey(std::string_view key) {
    static constexpr std::pair<std::string_view, ItemKind> kinds[] = {
        {"New File", ItemKind::NewFile},
        {"New File From Window", ItemKind::NewFileFromWindow},
        {"Add to File Template", ItemKind::AddToFileTemplate},
        {"Common Path", ItemKind::CommonPath},
        {"Common App", ItemKind::CommonApp},
        {"Convert to", ItemKind::Convert},
        {"Copy to", ItemKind::CopyTo},
        {"Move to", ItemKind::MoveTo},
        {"Terminal To", ItemKind::TerminalTo},
        {"iTerm2 To", ItemKind::TerminalTo},
        {"File Info", ItemKind::FileInfo},
        {"Cut Paste", ItemKind::CutPaste},
        {"Folder Icon", ItemKind::FolderIcon},
        {"Encrypted Compression", ItemKind::Compress},
        {"Lock and Unlock", ItemKind::LockUnlock},
        {"Embed in Folder", ItemKind::EmbedFolder},
        {"Unembed Folder", ItemKind::UnembedFolder},
        {"Color Picker", ItemKind::ColorPicker},
        {"Execute Script", ItemKind::ExecuteScript},
        {"Extract Icon", ItemKind::ExtractIcon},
        {"Sep Line", ItemKind::SepLine},
        {"Delete", ItemKind::Delete},
        {"Copy Path", ItemKind::CopyPath},
        {"System Hide Files", ItemKind::SystemHideFiles},
        {"Go Set", ItemKind::GoSet},
    };
    for (const auto& [name, kind] : kinds)
        if (name == key) return kind;
    return ItemKind::Other;
}

PXMenuItem::Ptr PXMenuItem::create(std::string itemKey) {
    auto item = create();
    item->key = std::move(itemKey);
    item->resolveKind();
    return item;
}

PXMenuItem::Ptr PXMenuItem::setItem() {
    auto item = create("Go Set");
    item->icon = "set";
    item->forever = true;
    item->disabledAuth = true;
    return item;
}

PXMenuItem::Ptr PXMenuItem::sepLineItem() {
    auto item = create("Sep Line");
    item->displayName = std::string(26, '-');
    return item;
}

PXMenuItem::Ptr PXMenuItem::addToFileTemplate() {
    auto item = create("Add to File Template");
    item->icon = "add";
    return item;
}

bool PXMenuItem::isValidParent(platform::Settings& suite) const {
    if (!children || children->empty()) return true;
    for (const auto& child : *children)
        if (!suite.boolForKey(child->key)) return true;
    return false;
}

std::string PXMenuItem::menuTitle() const {
    if (filehash::isValid(displayName)) return displayName;
    if (filehash::isValid(appName)) return localized("Open With") + localized(key);
    return localized(key);
}

namespace {

std::string iconForExtension(std::string ext) {
    if (ext == "doc") ext = "docx";
    if (ext == "xls") ext = "xlsx";
    if (ext == "ppt") ext = "pptx";
    if (auto reference = iconReferenceForResource(ext)) return *reference;
    return iconReferenceForResource("file").value_or("");
}

} // namespace

std::string PXMenuItem::menuIcon() const {
    if (filehash::isValid(iconPath) && ::access(iconPath.c_str(), R_OK) == 0) return iconPath;
    if (filehash::isValid(icon))
        if (auto reference = iconReferenceForResource(icon)) return *reference;
    if (!filehash::isValid(path)) return {};
    PXFile file(path);
    if (file.isFolder()) return iconReferenceForResource("folder").value_or("");
    return iconForExtension(file.ext());
}

void PXMenuItem::setChildren(const Ptr& self, List items) {
    for (const auto& child : items)
        child->parent = self;
    children = std::move(items);
}

} // namespace px
