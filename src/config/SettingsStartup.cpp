#include "config/SettingsStartup.h"

#include "config/MenuKeys.h"
#include "config/PXDefaultData.h"
#include "config/PXMenuManager.h"
#include "plist/PlistCodec.h"
#include "support/FileIO.h"

namespace px::startup {

namespace {

// The message for a settings file that exists but holds no readable dictionary.
std::optional<std::string> damageOf(const std::string& path) {
    if (!io::exists(path)) return std::nullopt;
    auto parsed = plist::readFile(path);
    if (parsed.isError()) return parsed.error().message;
    if (!parsed.value().isDictionary()) return "it does not hold a dictionary";
    return std::nullopt;
}

// Where the settings file keeps a damaged file: the first free "<name>.broken[-N]".
std::string freeBrokenName(const std::string& path) {
    std::string aside = path + ".broken";
    for (int n = 1; io::exists(aside); ++n)
        aside = path + ".broken-" + std::to_string(n);
    return aside;
}

} // namespace

SettingsStart prepareSettings(const PXMenuManager& store, const std::string& settingsFile) {
    SettingsStart start;
    if (!settingsFile.empty()) {
        start.damage = damageOf(settingsFile);
        if (start.damage) start.brokenCopy = freeBrokenName(settingsFile);
    }
    start.seeded = !store.sharedDefaults().objectForKey(menukey::kRightMenu);
    PXDefaultData(store).setup();
    if (start.damage && !io::exists(start.brokenCopy)) start.brokenCopy.clear();
    return start;
}

} // namespace px::startup
