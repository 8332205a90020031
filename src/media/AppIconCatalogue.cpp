#include "media/AppIconCatalogue.h"

#include "support/FileHash.h"
#include "support/FileIO.h"

#include <array>
#include <utility>

namespace px::media {
namespace {

using Json = nlohmann::ordered_json;

std::vector<std::string> splitAt(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (std::size_t end; (end = text.find(separator, start)) != std::string::npos; start = end + 1)
        parts.push_back(text.substr(start, end - start));
    parts.push_back(text.substr(start));
    return parts;
}

bool startsWith(const std::string& text, std::string_view prefix) {
    return text.compare(0, prefix.size(), prefix) == 0;
}

bool contains(const std::string& text, std::string_view part) {
    return text.find(part) != std::string::npos;
}

std::string lowerCased(std::string text) {
    for (char& c : text)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return text;
}

std::string iOSIdiom(const std::string& fileName) {
    if (contains(lowerCased(fileName), "ipad")) return "ipad";
    return contains(fileName, "store") ? "ios-marketing" : "iphone";
}

std::string watchRole(const std::string& prefixWord) {
    if (startsWith(prefixWord, "companion")) return "companionSettings";
    if (startsWith(prefixWord, "shortLook")) return "quickLook";
    return prefixWord;
}

std::optional<std::string> watchSubtype(const std::string& fileName) {
    static const std::array<std::pair<const char*, const char*>, 6> kSubtypes{{
        {"notificationCenter_24", "38mm"},
        {"notificationCenter_27", "42mm"},
        {"appLauncher_40", "38mm"},
        {"longLook_44", "42mm"},
        {"shortLook_86", "38mm"},
        {"shortLook_98", "42mm"},
    }};
    for (const auto& [prefix, subtype] : kSubtypes)
        if (startsWith(fileName, prefix)) return subtype;
    return std::nullopt;
}

std::string androidResolution(const std::string& fileName) {
    if (contains(fileName, "36@1.3x")) return "mdpi 48pt";
    if (contains(fileName, "36@2x")) return "hdpi 72pt";
    if (contains(fileName, "36@2.7x")) return "xhdpi 96pt";
    return "ldpi 36pt";
}

void addPlatformFields(Json& image, const std::string& fileName, const std::string& prefixWord,
                       AppIconSet set) {
    switch (set) {
    case AppIconSet::MacOS:
        image["idiom"] = "mac";
        break;
    case AppIconSet::IOS:
        image["idiom"] = iOSIdiom(fileName);
        break;
    case AppIconSet::Watch:
        image["idiom"] = "watch";
        image["role"] = watchRole(prefixWord);
        if (auto subtype = watchSubtype(fileName)) image["subtype"] = *subtype;
        break;
    case AppIconSet::Android:
        image["idiom"] = "android";
        image["resolution"] = androidResolution(fileName);
        break;
    }
}

bool isPngName(const std::string& fileName) {
    return fileName.size() > 4 && lowerCased(fileName.substr(fileName.size() - 4)) == ".png";
}

} // namespace

std::optional<Json> catalogueImage(const std::string& fileName, AppIconSet set) {
    if (startsWith(fileName, ".") || !isPngName(fileName)) return std::nullopt;
    auto parts = splitAt(fileName.substr(0, fileName.size() - 4), '_');
    if (parts.size() != 2) return std::nullopt;
    auto sizeAndScale = splitAt(parts[1], '@');
    Json image;
    image["size"] = sizeAndScale[0];
    image["filename"] = fileName;
    if (set != AppIconSet::Android)
        image["scale"] = sizeAndScale.size() > 1 ? sizeAndScale[1] : std::string("1x");
    addPlatformFields(image, fileName, parts[0], set);
    return image;
}

bool createConfigJsonToPath(const std::string& appIconSetFolder, AppIconSet set) {
    Json images = Json::array();
    for (const std::string& name : filehash::folderEntries(appIconSetFolder))
        if (auto image = catalogueImage(name, set)) images.push_back(std::move(*image));
    Json catalogue;
    catalogue["images"] = std::move(images);
    catalogue["info"] = {{"version", 1}, {"author", "xcode"}};
    std::string text = catalogue.dump(2) + "\n";
    return !io::replaceFileAtomically(appIconSetFolder + "/Contents.json", text).isError();
}

} // namespace px::media
