#include "extension/PXCheckPermit.h"

#include "config/Bookmark.h"
#include "config/PXURLCache.h"
#include "support/AccessDescription.h"
#include "support/FileHash.h"
#include "support/Localization.h"
#include "support/PathCoverage.h"
#include "support/Xdg.h"

#include <sys/stat.h>
#include <unistd.h>

namespace px {

namespace {

// The process itself may use the item: read and list a folder, read anything else.
bool processMayUse(const std::string& path) {
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0) return false;
    const int wanted = S_ISDIR(info.st_mode) ? (R_OK | X_OK) : R_OK;
    return ::access(path.c_str(), wanted) == 0;
}

constexpr int firstButton = 1000;

} // namespace

bool PXCheckPermit::startAccessingGrantFor(const std::string& path) {
    std::optional<std::string> url = m_cache.urlWithAllowAccessToPath(path);
    return url && bookmark::startAccessing(*url);
}

bool PXCheckPermit::checkPermitWithPath(const std::string& path) {
    if (!filehash::isValid(path)) return false;
    return startAccessingGrantFor(path) || processMayUse(path);
}

// A grant or the right to write is enough. Without either, the user first reads why the action
// cannot go on (the folder and its permissions) and only then, by choosing "Authorization",
// reaches the folder chooser that grants access; a grant made there counts as permission.
void PXCheckPermit::checkPermitWithPath(const std::string& path,
                                        const std::function<void()>& success,
                                        const std::function<void()>& failure) {
    if (!filehash::isValid(path)) return;
    const bool permitted =
        startAccessingGrantFor(path) || filehash::isWritable(path) || accessPrivacy(path);
    const std::function<void()>& next = permitted ? success : failure;
    if (next) next();
}

std::optional<std::string> PXCheckPermit::selectFolderWithPrompt(const std::string& prompt) {
    platform::Ui::OpenRequest request;
    request.button = prompt;
    request.chooseFiles = false;
    request.chooseDirectories = true;
    return m_ui.runOpenPanel(request);
}

bool PXCheckPermit::accessPrivacy(const std::string& path) {
    platform::Ui::Alert alert;
    alert.message = localized("Tip");
    alert.informative = localized("Auth Full Disk Access Tip") + "\n\n" + describeAccess(path);
    alert.buttons = {localized("Authorization"), localized("Cancel")};
    if (m_ui.runAlert(alert) != firstButton) return false;
    return authorize(path);
}

bool PXCheckPermit::authorize(const std::string& path) {
    const std::string home = xdg::homeDirectory();
    const bool inHome = grantCovers(home, path);
    platform::Ui::OpenRequest request;
    request.directory = inHome ? home : "/";
    request.button = localized("Authorization");
    if (!inHome) request.message = localized("Auth Root Tip");
    request.chooseFiles = false;
    request.chooseDirectories = true;
    std::optional<std::string> chosen = m_ui.runOpenPanel(request);
    if (!chosen) return false;
    m_cache.saveSecurityURL(*chosen);
    return true;
}

} // namespace px
