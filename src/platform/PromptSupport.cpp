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

std::string overwriteQuestion(const std::string& path) {
    const auto slash = path.find_last_of('/');
    std::string text = localized("Save Replace Tip");
    const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    if (auto at = text.find("%@"); at != std::string::npos) text.replace(at, 2, name);
    return text;
}

std::string resolvedPanelPath(const std::string& path, const std::string& directory) {
    if (path.starts_with('/') || directory.empty()) return path;
    if (directory.ends_with('/')) return directory + path;
    return directory + "/" + path;
}

} // namespace px::platform
