#pragma once

#include "config/PXMenuItem.h"

#include <cstddef>
#include <optional>
#include <string>

namespace px {

// The commands a chosen menu entry leads to. Dispatch decodes the entry and calls one of these;
// the full library implements them over the request they were made for, and tests substitute
// a recorder. Called on the main queue.
class MenuActions {
  public:
    virtual ~MenuActions() = default;

    // A "New File" template, "New File From Window", "Add to File Template", or a main-menu
    // entry that makes a file.
    virtual void createFile(const PXMenuItem& item) = 0;
    // A common path, or `entry` of its generated submenu (null for the path itself).
    virtual void openCommonPath(const std::string& path, const PXMenuItem* entry) = 0;
    virtual void openWithApp(const PXMenuItem& item) = 0;
    virtual void setFolderIcon(const PXMenuItem& item) = 0;
    // Conversion to the target at `index` of the "Convert to" submenu.
    virtual void convert(const PXMenuItem& target, std::size_t index, const PXMenuItem& parent) = 0;
    // The digest at `index` of the "File Info" submenu.
    virtual void copyFileInfo(const PXMenuItem& digest, std::size_t index) = 0;
    // Copy or move into the entry's path, or into a folder the user chooses when it has none.
    virtual void moveOrCopy(const PXMenuItem& destination, bool isCopy) = 0;
    // A terminal service at the path, or at the selection when none is given.
    virtual void openService(const std::string& serve, const std::optional<std::string>& path) = 0;
    virtual void deleteItems() = 0;
    virtual void copyPath() = 0;
    virtual void showSystemFiles(const PXMenuItem& item) = 0;
    virtual void changeVisibility(Visibility visibility) = 0;
    virtual void lockUnlock() = 0;
    virtual void cutPaste(const PXMenuItem& item) = 0;
    virtual void compress() = 0;
    virtual void embedFolder() = 0;
    virtual void unembedFolder() = 0;
    virtual void pickColor() = 0;
    virtual void executeScript() = 0;
    virtual void extractIcon() = 0;
    // The "Settings…" entry of every submenu.
    virtual void openSettings() = 0;
    // The prompt that asks for a review, offered some uses after the first.
    virtual void offerReview() = 0;
};

} // namespace px
