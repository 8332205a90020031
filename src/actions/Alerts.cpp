#include "actions/Alerts.h"

#include "config/Localization.h"
#include "platform/Platform.h"

namespace px::alert {

void alertWithMsg(const std::string& msg) {
    alertWithMsg(msg, {}, Handler{});
}

void alertWithMsg(const std::string& msg, const Handler& handler) {
    alertWithMsg(msg, {}, handler);
}

void alertPrompWithMsg(const std::string& msg, const Handler& handler) {
    alertWithMsg(msg, {localized("OK"), localized("Cancel")}, handler);
}

void alertWithMsg(const std::string& msg, const std::vector<std::string>& customButtons,
                  const Handler& handler) {
    platform::Ui::Alert alert;
    alert.message = localized("Tip");
    alert.informative = msg;
    alert.buttons =
        customButtons.empty() ? std::vector<std::string>{localized("OK")} : customButtons;
    const int result = platform::ui().runAlert(alert);
    if (handler) handler(result);
}

} // namespace px::alert
