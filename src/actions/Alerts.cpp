#include "actions/Alerts.h"

#include "support/Localization.h"

namespace px::alert {

void alertWithMsg(platform::Ui& ui, const std::string& msg) {
    alertWithMsg(ui, msg, {}, Handler{});
}

void alertWithMsg(platform::Ui& ui, const std::string& msg, const Handler& handler) {
    alertWithMsg(ui, msg, {}, handler);
}

void alertWithMsg(platform::Ui& ui, const std::string& msg,
                  const std::vector<std::string>& customButtons, const Handler& handler) {
    platform::Ui::Alert alert;
    alert.message = localized("Tip");
    alert.informative = msg;
    alert.buttons =
        customButtons.empty() ? std::vector<std::string>{localized("OK")} : customButtons;
    const int result = ui.runAlert(alert);
    if (handler) handler(result);
}

} // namespace px::alert
