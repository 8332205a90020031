#include "StartupMessages.h"

#include "Prompts.h"
#include "Texts.h"
#include "config/MenuKeys.h"
#include "config/MissingApplications.h"
#include "platform/linux/GioApplications.h"

#include <QStringList>

namespace px::settings {

bool showStartupMessages(const startup::SettingsStart& start, const PXMenuManager& store,
                         Prompts& prompts, QWidget* window) {
    if (start.damage)
        prompts.inform(window,
                       text("Settings Damaged Tip",
                            {qt(*start.damage),
                             qt(start.brokenCopy.empty() ? std::string("-") : start.brokenCopy)}));
    if (!start.seeded) return false;
    auto missing = entries::missingFactoryApplications(store, platform::isApplicationInstalled);
    if (missing.empty()) return false;
    QStringList names;
    for (const auto& key : missing)
        names << text(key);
    if (!prompts.confirm(window, text("Settings Missing Applications Question",
                                      {names.join(QStringLiteral(", "))})))
        return false;
    entries::switchOff(store, menukey::kCommonApp, missing);
    return true;
}

} // namespace px::settings
