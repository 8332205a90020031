#pragma once

#include "archive/CompressReport.h"
#include "archive/SSZipArchive.h"
#include "platform/Ui.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace px {

namespace compress {
struct Item;
}

// Packs items into one zip archive, optionally protected by a password: asks for the archive's
// name, folder and password in a save panel, then writes the archive on the background queue.
// A failed or cancelled job leaves no archive behind (an archive that was already at the chosen
// path stays as it was). Always held by std::shared_ptr: the running job keeps itself alive.
class PXCompress : public std::enable_shared_from_this<PXCompress> {
  public:
    // How the job reports: Started when the worker starts; Progress with done of total steps,
    // one step per entry as it is written (and one for the archive itself when it is among the
    // items), the last (total of total) once the archive is complete; Failed or Cancelled with
    // the steps done when it ends otherwise.
    using ProgressHandler = std::function<void(const CompressReport& report)>;

    // Set by stopCompress; the worker looks at it before every item and, while writing, at
    // least every 20 ms.
    std::atomic<bool> isCancel = false;
    // The archive being written, from the save panel. Set before the worker starts.
    std::string savePath;
    // The open archive of the running job.
    std::unique_ptr<SSZipArchive> zipArchive;

    // The name the save panel proposes: the item's name without its extension for one item,
    // the localized "Archiver" for several.
    static std::string defaultArchiveName(const std::vector<std::string>& paths);

    // Main queue. Shows the save panel (name, the first item's folder, a password field) and,
    // once confirmed, starts the worker on the background queue; every report reaches
    // `handler` on the main queue. Cancelling the panel reports (0, -2) at once. Nothing
    // happens for no paths.
    void compressPaths(platform::Ui& ui, const std::vector<std::string>& paths,
                       ProgressHandler handler);

    // Background queue; returns when the archive is finished, failed or cancelled. Items are
    // packed in order: a file as an entry named after it at the archive's root; a folder (not a
    // symbolic link to one) as entries "<folder>/<sub-path>" for everything inside it, where
    // only empty folders get entries of their own. The archive itself is skipped but counted.
    // Without a password (nullopt) nothing is encrypted; with one, files are AES-encrypted.
    void startCompressWithPaths(const std::vector<std::string>& paths,
                                const std::optional<std::string>& withPassword,
                                const ProgressHandler& handler);

    // Asks the running worker to stop; safe from any thread.
    void stopCompress() { isCancel = true; }

  private:
    struct Progress;
    bool writeArchive(const std::vector<std::string>& paths,
                      const std::optional<std::string>& password, Progress& progress,
                      const ProgressHandler& handler);
    bool addItems(const std::vector<compress::Item>& items,
                  const std::optional<std::string>& password, Progress& progress);
    bool closeArchive(Progress& progress, const ProgressHandler& handler);
};

} // namespace px
