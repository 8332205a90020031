#include "archive/PXLoadingWinCtl.h"

#include "config/Localization.h"
#include "platform/Platform.h"
#include "support/Queues.h"

#include <fmt/format.h>

namespace px {

namespace {

constexpr int kSuccessSeconds = 1;

} // namespace

void PXLoadingWinCtl::open() {
    m_tip = localized("Please Wait Tip");
    m_cancelShown = false;
    if (!m_open) {
        m_open = true;
        platform::ui().progressOpen([weak = weak_from_this()] {
            if (auto self = weak.lock(); self && self->m_open) self->onCancel();
        });
    }
    platform::ui().progressShow({m_tip, std::nullopt, false, false});
}

void PXLoadingWinCtl::setPercent(double value) {
    percent = value;
    m_cancelShown = true;
    m_tip = fmt::format("{:.1f}%", value * 100);
    if (m_open) platform::ui().progressShow({m_tip, value, true, false});
}

void PXLoadingWinCtl::close() {
    m_successShown = false;
    if (!m_open) return;
    m_open = false;
    platform::ui().progressClose();
}

void PXLoadingWinCtl::showSuccess(const std::string& text, std::function<void()> complete) {
    open();
    m_successShown = true;
    m_tip = text;
    platform::ui().progressShow({text, std::nullopt, false, true});
    queue::enterForegroundWithDelay(kSuccessSeconds,
                                    [self = shared_from_this(), complete = std::move(complete)] {
                                        self->close();
                                        if (complete) complete();
                                    });
}

void PXLoadingWinCtl::onCancel() {
    std::function<void()> handler = std::move(cancelHandler);
    cancelHandler = nullptr;
    if (handler) handler();
    close();
}

} // namespace px
