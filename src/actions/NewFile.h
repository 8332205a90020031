#pragma once

#include "actions/FileCreation.h"
#include "config/PXMenuItem.h"
#include "extension/Request.h"

#include <functional>
#include <string>
#include <vector>

// The steps of "New File" that its three entries share: where the file goes, what it is
// called, the collision prompt, and making the file.
namespace px::newfile {

// Answers of the collision prompt, in the order of its buttons.
inline constexpr int kKeepBoth = 1000;
inline constexpr int kStop = 1001;
inline constexpr int kReplace = 1002;

// The size, in pixels, of the icon saved for a new template.
inline constexpr int kTemplateIconSize = 60;

// The folder the new file goes into: the first selected item when it is a folder, else that
// item's folder; the home folder when nothing is selected.
std::string targetFolder(const std::vector<std::string>& selection);

// The item's `ext`; without one, its `key` (the factory entries are keyed by extension),
// except for an entry that copies a template, whose file simply has no extension.
std::string effectiveExtension(const PXMenuItem& item);

// <folder>/<file name or "Untitled">, with "." and the extension unless the item is a special
// file (its name is the whole name) or there is no extension.
std::string plainFilePath(const std::string& folder, const PXMenuItem& item);

// The path a save panel answered, with "." and the chosen extension appended when it does not
// already end with that extension (in any case), as a panel limited to one file type does.
std::string pathWithExtension(const std::string& path, const std::string& ext);

// Calls `block` with the path to write and whether an item there is to be replaced.
using PathBlock = std::function<void(const std::string& path, creation::Existing existing)>;

// The collision prompt. With nothing at `path`, calls the block with it at once. Otherwise asks
// "Keep Both" (the block gets the first free numbered name), "Stop" (nothing happens) or
// "Replace" (the block gets the path, to be replaced).
void replaceFileAlert(platform::Ui& ui, const std::string& path, const PathBlock& block);

// Makes the file at `path`: a copy of the item's template when it has one, else the shipped
// blank document for the extension, else an empty file. Then opens it when the preference
// "open new file" is on. A failure is shown as an alert and leaves nothing half made.
bool makeFile(const Request& request, const std::string& path, const std::string& ext,
              const PXMenuItem* item, creation::Existing existing);

// A new random UUID in upper-case text ("1B4E28BA-2FA1-11D2-883F-0016D3CCA427").
std::string uuid();

} // namespace px::newfile
