#pragma once

#include "platform/Settings.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace px {

// What an entry does, decided by its key once when the entry is read or made.
enum class ItemKind {
    Other, // applications, services, hiding commands and anything unknown
    NewFile,
    NewFileFromWindow,
    AddToFileTemplate,
    CommonPath,
    CommonApp,
    Convert,
    CopyTo,
    MoveTo,
    TerminalTo,
    FileInfo,
    CutPaste,
    FolderIcon,
    Compress,
    LockUnlock,
    EmbedFolder,
    UnembedFolder,
    ColorPicker,
    ExecuteScript,
    ExtractIcon,
    SepLine,
    Delete,
    CopyPath,
    SystemHideFiles,
    GoSet,
};

ItemKind itemKindForKey(std::string_view key);

// What the hiding entries do to the items' visibility.
enum class Visibility { Unchanged, Hidden, Shown };

// One entry of a configurable menu. Its kind is decided only by its key.
class PXMenuItem : public std::enable_shared_from_this<PXMenuItem> {
  public:
    using Ptr = std::shared_ptr<PXMenuItem>;
    using List = std::vector<Ptr>;

    static Ptr create() { return std::make_shared<PXMenuItem>(); }
    static Ptr create(std::string key);
    static Ptr setItem();
    static Ptr sepLineItem();
    static Ptr addToFileTemplate();

    std::string key;
    ItemKind kind = ItemKind::Other; // from the key: see resolveKind()
    std::string serve;
    std::string icon;
    std::string iconPath;
    std::string appName;
    bool disabledOpenPath = false;
    bool isAddToMainMenu = false;
    std::string path;
    std::string desc;
    std::string displayName;
    std::string templatePath;
    std::string ext;
    std::string fileName;
    std::string introduce;
    bool disabledAuth = false;
    bool isNeedFolder = false;
    bool isNeedSelectURL = false;
    bool isNotNeedURL = false;
    bool isMainMenuNewFile = false;
    bool isSpecialFile = false;
    bool forever = false;
    bool disabled = false;
    std::int64_t tag = 0;
    std::vector<std::string> formats;
    std::vector<std::string> cutPaths;
    bool isShowHideFile = false;
    Visibility visibility = Visibility::Unchanged;
    // The instruction "System Hide Files" copies, with one "%@" for on or off.
    std::string command;
    // Absent until the menu builder generates them; an empty list differs from none.
    std::optional<List> children;
    std::weak_ptr<PXMenuItem> parent;

    // Sets the kind from the key; the list readers and create() call it.
    void resolveKind() { kind = itemKindForKey(key); }

    bool isNewFile() const { return kind == ItemKind::NewFile; }
    bool isNewFileFromWindow() const { return kind == ItemKind::NewFileFromWindow; }
    bool isAddToFileTemplate() const { return kind == ItemKind::AddToFileTemplate; }
    bool isCommonPath() const { return kind == ItemKind::CommonPath; }
    bool isCommonApp() const { return kind == ItemKind::CommonApp; }
    bool isConvert() const { return kind == ItemKind::Convert; }
    bool isCopy() const { return kind == ItemKind::CopyTo; }
    bool isMove() const { return kind == ItemKind::MoveTo; }
    bool isTerminalTo() const { return kind == ItemKind::TerminalTo; }
    bool isFileInfo() const { return kind == ItemKind::FileInfo; }
    bool isCutPaste() const { return kind == ItemKind::CutPaste; }
    bool isFolderIcon() const { return kind == ItemKind::FolderIcon; }
    bool isCompress() const { return kind == ItemKind::Compress; }
    bool isLockUnlock() const { return kind == ItemKind::LockUnlock; }
    bool isEmbedFolder() const { return kind == ItemKind::EmbedFolder; }
    bool isUnembedFolder() const { return kind == ItemKind::UnembedFolder; }
    bool isColorPicker() const { return kind == ItemKind::ColorPicker; }
    bool isExecuteScript() const { return kind == ItemKind::ExecuteScript; }
    bool isExtractIcon() const { return kind == ItemKind::ExtractIcon; }
    bool isSepLine() const { return kind == ItemKind::SepLine; }

    // False when every child is switched off by a true boolean under its key in the suite.
    bool isValidParent(platform::Settings& suite) const;
    std::string menuTitle() const;
    // An icon reference: an image file path or an icon-theme name; empty for none.
    std::string menuIcon() const;
    // Appends children, making this item their parent.
    void setChildren(const Ptr& self, List items);
};

} // namespace px
