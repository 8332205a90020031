#include "actions/ProgressModel.h"

#include "support/Localization.h"
#include "support/Queues.h"

#include <fmt/format.h>

namespace px {

namespace {

constexpr int kSuccessSeconds = 1;

} // namespace

void ProgressModel::open() {
    m_tip = localized("Please Wait Tip");
    m_cancelShown = false;
    if (m_open) return;
    m_open = true;
    m_ui.progressOpen([weak = weak_from_this()] {
        if (auto self = weak.lock(); self && self->m_open) self->onCancel();
    });
}

void ProgressModel::setPercent(double value) {
    percent = value;
    m_cancelShown = true;
    m_tip = fmt::format("{:.1f}%", value * 100);
    if (m_open) m_ui.progressSetPercent(value);
}

void ProgressModel::close() {
    m_successShown = false;
    if (!m_open) return;
    m_open = false;
    m_ui.progressClose();
}

void ProgressModel::showSuccess(const std::string& text, std::function<void()> complete) {
    open();
    m_successShown = true;
    m_tip = text;
    m_ui.progressSuccess(text);
    queue::enterForegroundWithDelay(kSuccessSeconds,
                                    [self = shared_from_this(), complete = std::move(complete)] {
                                        self->close();
                                        if (complete) complete();
                                    });
}

void ProgressModel::onCancel() {
    std::function<void()> handler = std::move(cancelHandler);
    cancelHandler = nullptr;
    if (handler) handler();
    close();
}

} // namespace px
