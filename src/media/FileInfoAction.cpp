// The file-info submenu: the chosen digest of the first selected file, shown and copied. The
// digest runs on the background queue; a large file shows the progress window meanwhile, so no
// window freezes while it is read.
#include "actions/FileHash.h"
#include "archive/PXLoadingWinCtl.h"
#include "config/Localization.h"
#include "extension/FinderSync.h"
#include "media/Digest.h"
#include "platform/Platform.h"
#include "support/Queues.h"

#include <filesystem>

namespace px {

namespace {

// Files at least this large show the progress window while they are digested.
constexpr std::uintmax_t kLargeFileBytes = std::uintmax_t{32} << 20;

void showDigest(const std::string& title, const std::optional<std::string>& text) {
    platform::Ui::Alert alert{title, text.value_or(""), {localized("Copy"), localized("Cancel")}};
    if (platform::ui().runAlert(alert) == 1000 && text)
        filehash::copyToPasteboard(*text, platform::pasteboard());
}

} // namespace

void FinderSync::copyfileInfo(const PXMenuItem::Ptr& item) {
    const auto& urls = selectURLs();
    if (!item || urls.empty()) return;
    const std::string path = urls.front();
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) return;
    std::shared_ptr<PXLoadingWinCtl> loading;
    if (std::filesystem::file_size(path, error) >= kLargeFileBytes && !error) {
        loading = std::make_shared<PXLoadingWinCtl>();
        loading->open();
    }
    const auto algorithm = digest::algorithmForTag(item->tag);
    queue::enterBackground([path, algorithm, title = item->key, loading] {
        digest::Context context(algorithm);
        auto text = filehash::hashOfFileAtPath(path, context);
        queue::enterForeground([title, text = std::move(text), loading] {
            if (loading) loading->close();
            showDigest(title, text);
        });
    });
}

} // namespace px
