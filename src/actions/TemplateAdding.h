#pragma once

#include "plist/Value.h"
#include "support/ErrorOr.h"

#include <string>

// "Add to File Template": an item the person picked becomes a new entry of the template list.
namespace px {
class PXMenuManager;
}

namespace px::newfile {

// Copies the item at `sourcePath` (a file, or a folder with everything in it) into the template
// folder under a new UUID, saves its icon beside it as "<UUID>.png" when one can be drawn, and
// appends the entry ("key", "ext", "displayName", "templatePath" and, with an icon, "iconPath")
// to the store's "array new file". Returns the entry; on failure nothing is added and no copy is
// left.
ErrorOr<plist::Value> addFileTemplate(const PXMenuManager& store, const std::string& sourcePath);

} // namespace px::newfile
