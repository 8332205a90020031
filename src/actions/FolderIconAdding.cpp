#include "actions/FolderIconAdding.h"

#include "actions/NewFile.h"
#include "actions/PixbufImage.h"
#include "config/MenuKeys.h"
#include "config/PXMenuManager.h"
#include "support/FileIO.h"
#include "support/PXFile.h"

#include <cerrno>

namespace px::foldericon {

ErrorOr<plist::Value> addFolderIcon(const PXMenuManager& store, const std::string& imagePath) {
    const std::string folder = store.folderIconFolder();
    TRY(io::makeDirectories(folder));
    const std::string key = newfile::uuid();
    const std::string iconPath = folder + "/" + key + ".png";
    if (!pixbuf::renderSquarePNG(imagePath, iconPath, kAddedIconSize))
        return Error{imagePath + " is not an image that can be read", EINVAL};
    plist::Value entry =
        plist::Value::makeDictionary({{"key", plist::Value(key)},
                                      {"iconPath", plist::Value(iconPath)},
                                      {"displayName", plist::Value(PXFile(imagePath).name())}});
    store.addMenuKey(menukey::kFolderIcon, entry, false);
    return entry;
}

} // namespace px::foldericon
