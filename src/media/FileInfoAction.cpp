// The file-info submenu: the chosen digest of the first selected file, shown and copied. The
// digest runs on the background queue; a large file shows the progress window meanwhile, so no
// window freezes while it is read.
#include "actions/Commands.h"
#include "actions/ProgressModel.h"
#include "media/Digest.h"
#include "platform/Platform.h"
#include "support/FileHash.h"
#include "support/Localization.h"
#include "support/Queues.h"

#include <filesystem>

namespace px::commands {

namespace {

// Files at least this large show the progress window while they are digested.
constexpr std::uintmax_t kLargeFileBytes = std::uintmax_t{32} << 20;

void showDigest(ActionContext& cx, const std::string& title,
                const std::optional<std::string>& text) {
    platform::Ui::Alert alert{title, text.value_or(""), {localized("Copy"), localized("Cancel")}};
    if (cx.ui().runAlert(alert) == 1000 && text) cx.request.pasteboard().copyTrimmed(*text);
}

} // namespace

void copyFileInfo(ActionContext& cx, const PXMenuItem& item, std::size_t index) {
    const auto& urls = cx.selection();
    if (urls.empty()) return;
    const std::string path = urls.front();
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) return;
    std::shared_ptr<ProgressModel> loading;
    if (std::filesystem::file_size(path, error) >= kLargeFileBytes && !error) {
        loading = std::make_shared<ProgressModel>(cx.ui());
        loading->open();
    }
    const auto algorithm = digest::algorithmForTag(static_cast<std::int64_t>(index));
    // The context outlives the queued work: the request's runner drains the queues first.
    queue::enterBackground([&cx, path, algorithm, title = item.key, loading] {
        digest::Context context(algorithm);
        auto text = filehash::hashOfFileAtPath(path, context);
        queue::enterForeground([&cx, title, text = std::move(text), loading] {
            if (loading) loading->close();
            showDigest(cx, title, text);
        });
    });
}

} // namespace px::commands
