// The compression job's start on the main queue: the default name and the save panel.
#include "archive/PXCompress.h"

#include "support/FileHash.h"
#include "support/Localization.h"
#include "support/PXFile.h"
#include "support/PathName.h"
#include "support/Queues.h"

namespace px {

namespace {

// The panel only accepts zip archives; a name without the extension gets it.
std::string withZipExtension(const std::string& path) {
    if (px::path::lowercased(px::path::pathExtension(path)) == "zip") return path;
    return path + ".zip";
}

platform::Ui::SaveRequest saveRequest(const std::vector<std::string>& paths) {
    platform::Ui::SaveRequest request;
    request.directory = PXFile(paths.front()).folder();
    request.name = PXCompress::defaultArchiveName(paths);
    request.passwordAccessory = true;
    return request;
}

// Every report goes on to the main queue.
PXCompress::ProgressHandler onMainQueue(PXCompress::ProgressHandler handler) {
    return [handler = std::move(handler)](const CompressReport& report) {
        queue::enterForeground([handler, report] { handler(report); });
    };
}

} // namespace

std::string PXCompress::defaultArchiveName(const std::vector<std::string>& paths) {
    if (paths.size() == 1) return PXFile(paths.front()).name();
    return localized("Archiver");
}

void PXCompress::compressPaths(platform::Ui& ui, const std::vector<std::string>& paths,
                               ProgressHandler handler) {
    if (paths.empty()) return;
    auto answer = ui.runSavePanel(saveRequest(paths));
    if (!answer || answer->path.empty()) return handler({CompressReport::Kind::Cancelled});
    savePath = withZipExtension(answer->path);
    std::optional<std::string> password;
    if (filehash::isValid(answer->password)) password = answer->password;
    queue::enterBackground(
        [self = shared_from_this(), paths, password, handler = onMainQueue(std::move(handler))] {
            self->startCompressWithPaths(paths, password, handler);
        });
}

} // namespace px
