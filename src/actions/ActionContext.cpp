#include "actions/ActionContext.h"

#include "actions/EmbedFolderPrompt.h"
#include "archive/PXCompress.h"

namespace px {

ProgressModel& ActionContext::progress() {
    if (!m_progress) m_progress = std::make_shared<ProgressModel>(request.ui());
    return *m_progress;
}

void ActionContext::beginLoading() {
    ++loadingCount;
    progress().open();
}

void ActionContext::endLoading() {
    if (--loadingCount <= 0) {
        loadingCount = 0;
        clean();
    }
}

void ActionContext::clean() {
    if (m_progress) m_progress->close();
    m_progress.reset();
    compress.reset();
    embedPrompt.reset();
}

} // namespace px
