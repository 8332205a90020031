// The "Settings…" entry and the review prompt.
#include "actions/Alerts.h"
#include "actions/Commands.h"
#include "support/BuildConfig.h"
#include "support/Localization.h"

namespace px::commands {

void openSettings(ActionContext& cx) {
    if (!cx.request.applications().launchDesktopEntry("pxmenu-settings.desktop"))
        alert::alertWithMsg(cx.ui(), localized("Settings Missing Tip"));
}

void offerReview(ActionContext& cx) {
    std::vector<std::string> buttons{localized("Go Review"), localized("Next Time")};
    alert::alertWithMsg(cx.ui(), localized("Review Tip"), buttons, [&cx](int result) {
        if (result != 1000) return;
        cx.request.workspace().openURL(kSoftwareCentrePage);
        cx.request.preferences().setBool("is reviewed", true);
    });
}

} // namespace px::commands
