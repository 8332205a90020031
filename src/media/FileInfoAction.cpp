// The file-info submenu: the chosen digest of the first selected file, shown and copied.
#include "actions/FileHash.h"
#include "config/Localization.h"
#include "extension/FinderSync.h"
#include "media/Digest.h"
#include "platform/Platform.h"

#include <filesystem>

namespace px {

void FinderSync::copyfileInfo(const PXMenuItem::Ptr& item) {
    const auto& urls = selectURLs();
    if (!item || urls.empty()) return;
    const std::string path = urls.front();
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) return;
    digest::Context context(digest::algorithmForTag(item->tag));
    std::optional<std::string> text = filehash::hashOfFileAtPath(path, context);
    platform::Ui::Alert alert{
        item->key, text.value_or(""), {localized("Copy"), localized("Cancel")}};
    if (platform::ui().runAlert(alert) == 1000 && text)
        filehash::copyToPasteboard(*text, platform::pasteboard());
}

} // namespace px
