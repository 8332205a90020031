#include "media/AppIconTables.h"

#include <cmath>

namespace px::media {
namespace {

// One size of a table: written as given ("83.5"), scaled as a number.
struct IconSize {
    const char* text;
    double points;
};

class TableWriter {
  public:
    std::vector<AppIconFile> files;

    void oneX(IconSize size, const std::string& prefix) { add(size, prefix, "", 1.0); }
    // The @2x file and, unless only, the 1x file too.
    void twoX(IconSize size, const std::string& prefix, bool only) {
        add(size, prefix, "@2x", 2.0);
        if (!only) oneX(size, prefix);
    }
    // The @3x file and, unless only, the @2x file (and only that one).
    void threeX(IconSize size, const std::string& prefix, bool only) {
        add(size, prefix, "@3x", 3.0);
        if (!only) twoX(size, prefix, true);
    }
    void add(IconSize size, const std::string& prefix, const std::string& scale, double factor) {
        std::string name = prefix + size.text + "x" + size.text + scale + ".png";
        files.push_back({std::move(name), static_cast<int>(std::lround(size.points * factor))});
    }
};

// Exactly eight files: there is no 32 row.
std::vector<AppIconFile> macOSFiles() {
    TableWriter table;
    for (IconSize size : {IconSize{"512", 512}, {"256", 256}, {"128", 128}, {"16", 16}})
        table.twoX(size, "icon_", false);
    return table.files;
}

std::vector<AppIconFile> iOSFiles() {
    TableWriter table;
    table.twoX({"76", 76}, "iPadApp_", false);
    table.twoX({"20", 20}, "iPadNotifications_", false);
    table.twoX({"29", 29}, "iPadSpootlight5_", false);
    table.twoX({"40", 40}, "iPadSpootlight7_", false);
    table.twoX({"83.5", 83.5}, "iPadProApp_", true);
    table.threeX({"60", 60}, "iPhoneApp_", false);
    table.threeX({"20", 20}, "iPhoneNotification_", false);
    table.threeX({"29", 29}, "iPhoneSpootlight5_", false);
    table.threeX({"40", 40}, "iPhoneSpootlight7_", false);
    table.oneX({"1024", 1024}, "store_");
    return table.files;
}

std::vector<AppIconFile> watchFiles() {
    TableWriter table;
    table.twoX({"40", 40}, "appLauncher_", true);
    table.twoX({"29", 29}, "companion_", true);
    table.threeX({"29", 29}, "companion_", true);
    table.twoX({"44", 44}, "longLook_", true);
    table.twoX({"24", 24}, "notificationCenter_", true);
    table.twoX({"27.5", 27.5}, "notificationCenter_", true);
    table.twoX({"86", 86}, "shortLook_", true);
    table.twoX({"98", 98}, "shortLook_", true);
    return table.files;
}

// The @1.3x and @2.7x files are 24 and 48 pixels, whatever their names suggest.
std::vector<AppIconFile> androidFiles() {
    return {{"AndroidIcon_36x36@2x.png", 72},
            {"AndroidIcon_36x36.png", 36},
            {"AndroidIcon_36x36@1.3x.png", 24},
            {"AndroidIcon_36x36@2.7x.png", 48}};
}

} // namespace

std::vector<AppIconFile> appIconFiles(AppIconSet set) {
    switch (set) {
    case AppIconSet::MacOS:
        return macOSFiles();
    case AppIconSet::IOS:
        return iOSFiles();
    case AppIconSet::Watch:
        return watchFiles();
    case AppIconSet::Android:
        return androidFiles();
    }
    return {};
}

} // namespace px::media
