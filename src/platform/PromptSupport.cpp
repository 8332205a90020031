#include "platform/PromptSupport.h"

#include "support/Localization.h"

#include <algorithm>

namespace px::platform {

int alertButtonCount(const Ui::Alert& alert) {
    return static_cast<int>(std::max<std::size_t>(1, alert.buttons.size()));
}

int alertCancelResult(const Ui::Alert& alert) {
    const std::string cancel = localized("Cancel");
    const auto found = std::find(alert.buttons.begin(), alert.buttons.end(), cancel);
    if (found != alert.buttons.end())
        return kFirstAlertButton + static_cast<int>(found - alert.buttons.begin());
    return kFirstAlertButton + alertButtonCount(alert) - 1;
}

std::string fileTypeTitle(const PXMenuItem& item) {
    const std::string& extension = item.ext.empty() ? item.key : item.ext;
    return item.menuTitle() + " (." + extension + ")";
}

std::vector<FileTypeEntry> fileTypeEntries(const PXMenuItem::List& items, bool withIcons) {
    std::vector<FileTypeEntry> entries;
    for (std::size_t index = 0; index < items.size(); ++index) {
        const auto& item = items[index];
        if (!item || item->isSpecialFile || item->isNewFileFromWindow()) continue;
        entries.push_back({index, fileTypeTitle(*item), withIcons ? item->menuIcon() : ""});
    }
    return entries;
}

std::string resolvedPanelPath(const std::string& path, const std::string& directory) {
    if (path.starts_with('/') || directory.empty()) return path;
    if (directory.ends_with('/')) return directory + path;
    return directory + "/" + path;
}

} // namespace px::platform
