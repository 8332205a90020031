// Saving the icon of each selected item as a 1024-pixel PNG beside it.
#include "actions/Commands.h"
#include "actions/FailureLog.h"
#include "actions/FileIcon.h"
#include "support/FileHash.h"
#include "support/FileIO.h"
#include "support/PXFile.h"

namespace px::commands {

namespace {

constexpr int kExtractedIconPixels = 1024;

// "<folder>/<name>.png" with a free name: Clock.app gives Clock.png, photo.png gives photo-1.png.
void saveIconBeside(const std::string& itemPath) {
    if (!io::exists(itemPath)) return logFailure({itemPath + " no longer exists"});
    PXFile item(itemPath);
    std::string target = filehash::uniquePath(item.folder() + "/" + item.name() + ".png");
    if (!fileicon::saveIconPNG(itemPath, target, kExtractedIconPixels))
        logFailure({"cannot save the icon of " + itemPath + " as " + target});
}

} // namespace

void extractIcon(ActionContext& cx) {
    for (const std::string& itemPath : cx.selection())
        saveIconBeside(itemPath);
}

} // namespace px::commands
