#pragma once

#include "platform/Settings.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace px {

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
    std::string command;
    // Absent until the menu builder generates them; an empty list differs from none.
    std::optional<List> children;
    std::weak_ptr<PXMenuItem> parent;

    bool isNewFile() const { return key == "New File"; }
    bool isNewFileFromWindow() const { return key == "New File From Window"; }
    bool isAddToFileTemplate() const { return key == "Add to File Template"; }
    bool isCommonPath() const { return key == "Common Path"; }
    bool isCommonApp() const { return key == "Common App"; }
    bool isConvert() const { return key == "Convert to"; }
    bool isCopy() const { return key == "Copy to"; }
    bool isMove() const { return key == "Move to"; }
    bool isTerminalTo() const { return key == "Terminal To" || key == "iTerm2 To"; }
    bool isFileInfo() const { return key == "File Info"; }
    bool isCutPaste() const { return key == "Cut Paste"; }
    bool isFolderIcon() const { return key == "Folder Icon"; }
    bool isCompress() const { return key == "Encrypted Compression"; }
    bool isLockUnlock() const { return key == "Lock and Unlock"; }
    bool isEmbedFolder() const { return key == "Embed in Folder"; }
    bool isUnembedFolder() const { return key == "Unembed Folder"; }
    bool isColorPicker() const { return key == "Color Picker"; }
    bool isExecuteScript() const { return key == "Execute Script"; }
    bool isExtractIcon() const { return key == "Extract Icon"; }
    bool isSepLine() const { return key == "Sep Line"; }

    // False when every child is switched off by a true boolean under its key in the suite.
    bool isValidParent(platform::Settings& suite) const;
    bool isValidParent() const;
    std::string menuTitle() const;
    // An icon reference: an image file path or an icon-theme name; empty for none.
    std::string menuIcon() const;
    // Appends children, making this item their parent.
    void setChildren(const Ptr& self, List items);
};

} // namespace px
