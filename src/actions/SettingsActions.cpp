// The "Settings…" entry and the review prompt.
#include "actions/Alerts.h"
#include "actions/Commands.h"
#include "support/BuildConfig.h"
#include "support/Localization.h"

#include <fmt/format.h>

namespace px::commands {

void openSettings(ActionContext& cx) {
    if (!cx.request.applications().launchDesktopEntry("pxmenu-settings.desktop"))
        fmt::print(stderr, "pxmenu: the settings application pxmenu-settings is not installed\n");
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
