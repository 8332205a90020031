#pragma once

#include <string>
#include <vector>

// The files of each app icon set: names by size and scale, and the pixel size of each.
namespace px::media {

enum class AppIconSet { MacOS, IOS, Watch, Android };

struct AppIconFile {
    std::string fileName; // "iPadProApp_83.5x83.5@2x.png"
    int pixels = 0;       // width and height of the square picture
};

// The set's files in the order they are written.
std::vector<AppIconFile> appIconFiles(AppIconSet set);

} // namespace px::media
