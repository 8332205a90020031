#pragma once

#include "actions/ProgressModel.h"
#include "extension/Request.h"

#include <cstdint>
#include <memory>

namespace px {

class PXCompress;
class EmbedFolderPrompt;

// What the commands of one request share: the request, and the progress window and dialogs of
// the jobs it started. Used on the main queue; it outlives the request's queued work (the
// runner drains the queues before it goes).
class ActionContext {
  public:
    explicit ActionContext(Request& forRequest) : request(forRequest) {}
    ActionContext(const ActionContext&) = delete;
    ActionContext& operator=(const ActionContext&) = delete;

    Request& request;
    platform::Ui& ui() const { return request.ui(); }
    PXMenuManager& store() const { return request.store(); }
    const std::vector<std::string>& selection() const { return request.selection(); }

    // The progress window, made on first use; clean() closes and drops it.
    ProgressModel& progress();
    // Brackets a background job: counts it and opens the progress window; endLoading()
    // uncounts it and cleans up once no job runs.
    void beginLoading();
    void endLoading();
    // Closes the progress window and lets go of the running compression and the embed dialog.
    void clean();

    std::int64_t loadingCount = 0;
    // The running compression job; set while one runs (one at a time).
    std::shared_ptr<PXCompress> compress;
    // The open embed dialog, kept until clean().
    std::shared_ptr<EmbedFolderPrompt> embedPrompt;

  private:
    std::shared_ptr<ProgressModel> m_progress;
};

} // namespace px
