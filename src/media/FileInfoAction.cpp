// The file-info submenu: the chosen digest of the first selected file, shown and copied.
#include "actions/Commands.h"
#include "media/Digest.h"
#include "platform/Platform.h"
#include "support/FileHash.h"
#include "support/Localization.h"

#include <filesystem>

namespace px::commands {

void copyFileInfo(ActionContext& cx, const PXMenuItem& item, std::size_t index) {
    const auto& urls = cx.selection();
    if (urls.empty()) return;
    const std::string path = urls.front();
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) return;
    digest::Context context(digest::algorithmForTag(static_cast<std::int64_t>(index)));
    std::optional<std::string> text = filehash::hashOfFileAtPath(path, context);
    platform::Ui::Alert alert{
        item.key, text.value_or(""), {localized("Copy"), localized("Cancel")}};
    if (cx.ui().runAlert(alert) == 1000 && text) cx.request.pasteboard().copyTrimmed(*text);
}

} // namespace px::commands
