#pragma once

#include "actions/ActionContext.h"
#include "config/PXMenuItem.h"

#include <cstddef>
#include <optional>
#include <string>

// The commands of the menu, one family to a file beside the code it drives; FullActions hands
// each chosen entry to one of them. Each works on the request's selection. Main queue.
namespace px::commands {

// NewFileActions.cpp
void createFile(ActionContext& cx, const PXMenuItem& item);
// OpenActions.cpp
void openWithApp(ActionContext& cx, const PXMenuItem& item, const std::optional<std::string>& path);
void openService(ActionContext& cx, const std::string& serve,
                 const std::optional<std::string>& path);
// PathActions.cpp
void openCommonPath(ActionContext& cx, const std::string& path, const PXMenuItem* entry);
void copyPath(ActionContext& cx);
// FolderIconAction.cpp
void setFolderIcon(ActionContext& cx, const PXMenuItem& item);
// CopyMoveAction.cpp
void moveOrCopy(ActionContext& cx, const PXMenuItem& destination, bool isCopy);
// DeleteAction.cpp
void deleteItems(ActionContext& cx);
// VisibilityActions.cpp
void showSystemFiles(ActionContext& cx, const PXMenuItem& item);
void changeVisibility(ActionContext& cx, Visibility visibility);
// LockActions.cpp
void lockUnlock(ActionContext& cx);
// CutPasteAction.cpp
void cutPaste(ActionContext& cx, const PXMenuItem& item);
// EmbedActions.cpp
void embedFolder(ActionContext& cx);
void unembedFolder(ActionContext& cx);
// ScriptActions.cpp
void executeScript(ActionContext& cx);
// ExtractIconAction.cpp
void extractIcon(ActionContext& cx);
// ../archive/CompressAction.cpp
void compress(ActionContext& cx);
// ../media/ConvertAction.cpp
void convert(ActionContext& cx, const PXMenuItem& target, std::size_t index,
             const PXMenuItem& parent);
// ../media/FileInfoAction.cpp
void copyFileInfo(ActionContext& cx, const PXMenuItem& digest, std::size_t index);
// ../media/ColorPickerAction.cpp
void pickColor(ActionContext& cx);
// SettingsActions.cpp
void openSettings(ActionContext& cx);
void offerReview(ActionContext& cx);

} // namespace px::commands
