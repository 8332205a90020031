#include "media/AppIconExport.h"

#include "actions/FailureLog.h"
#include "media/AppIconCatalogue.h"
#include "media/AppIconTables.h"
#include "media/IcnsFile.h"
#include "media/ImageFile.h"
#include "support/FileHash.h"
#include "support/FileIO.h"

#include <algorithm>
#include <filesystem>
#include <vector>

namespace px::media {
namespace {

constexpr int kIcnsType = -1;
constexpr int kLargestIconPixels = 1024;

AppIconSet setOfType(int type) {
    switch (type) {
    case 0:
        return AppIconSet::MacOS;
    case 1:
        return AppIconSet::IOS;
    case 2:
        return AppIconSet::Watch;
    default:
        return AppIconSet::Android;
    }
}

const char* folderSuffix(AppIconSet set) {
    switch (set) {
    case AppIconSet::MacOS:
        return "(OSX)";
    case AppIconSet::IOS:
        return "(iOS)";
    case AppIconSet::Watch:
        return "(iWatch)";
    case AppIconSet::Android:
        return "(Android)";
    }
    return "";
}

// In-memory copies of the source, each half the size of the one before (down to 64 pixels). A
// file is resampled from the smallest copy at least twice its size: the cost of a resampling
// grows with the pixels it reads, and a halving step keeps the result as sharp.
class SourceLevels {
  public:
    explicit SourceLevels(const vips::VImage& source) { m_levels.push_back(source); }

    vips::VImage forSize(int pixels) {
        while (m_levels.back().width() / 2 >= std::max(2 * pixels, kSmallestLevel) && addHalf()) {
        }
        for (auto level = m_levels.rbegin(); level != m_levels.rend(); ++level)
            if (level->width() >= 2 * pixels) return *level;
        return m_levels.front();
    }

  private:
    static constexpr int kSmallestLevel = 64;

    bool addHalf() {
        const int half = m_levels.back().width() / 2;
        vips::VImage smaller = resampledImage(m_levels.back(), half, half);
        if (!smaller.get_image()) return false;
        try {
            m_levels.push_back(smaller.copy_memory());
            return true;
        } catch (const vips::VError&) {
            return false;
        }
    }

    std::vector<vips::VImage> m_levels;
};

// A file that cannot be written is left out.
void writeTable(const vips::VImage& source, const std::string& folder, AppIconSet set) {
    SourceLevels levels(source);
    for (const AppIconFile& file : appIconFiles(set)) {
        std::string path = folder + "/" + file.fileName;
        vips::VImage image = resampledImage(levels.forSize(file.pixels), file.pixels, file.pixels);
        if (!saveImageWithExt(image, "png", path)) logFailure({"cannot write the icon " + path});
    }
}

std::string parentFolder(const std::string& path) {
    std::string parent = std::filesystem::path(path).parent_path().string();
    return parent.empty() ? "." : parent;
}

void removeFolder(const std::string& folder) {
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
}

// Several sources in one folder all write the same AppIcon.icns: the last one wins.
void writeIcnsFile(const vips::VImage& source, const std::string& basePath) {
    const std::string folder = parentFolder(basePath);
    const std::string iconset = folder + "/.AppIcon.iconset";
    removeFolder(iconset);
    if (auto made = io::makeDirectories(iconset); made.isError()) return logFailure(made.error());
    writeTable(source, iconset, AppIconSet::MacOS);
    if (!icns::writeFromIconset(iconset, folder + "/AppIcon.icns"))
        logFailure({"cannot write " + folder + "/AppIcon.icns"});
    removeFolder(iconset);
}

void writeIconSet(const vips::VImage& source, const std::string& basePath, int type) {
    const AppIconSet set = setOfType(type);
    auto folders = getFolderPath(basePath, type);
    if (!folders) return;
    writeTable(source, folders->appIconSetFolder, set);
    if (!createConfigJsonToPath(folders->appIconSetFolder, set))
        logFailure({"cannot write the catalogue in " + folders->appIconSetFolder});
}

// The source decoded once, in memory, for all the files of a set; a larger source is first
// brought down to the largest file's size, so that each file resamples no more than that.
std::optional<vips::VImage> workingPixels(const vips::VImage& source) {
    ensureVipsStarted();
    try {
        if (source.width() <= kLargestIconPixels) return source.copy_memory();
        vips::VImage largest = resampledImage(source, kLargestIconPixels, kLargestIconPixels);
        if (largest.get_image()) return largest.copy_memory();
    } catch (const vips::VError& error) {
        logFailure({std::string("cannot read the image: ") + error.what()});
        return std::nullopt;
    }
    logFailure({"cannot resample the image"});
    return std::nullopt;
}

} // namespace

std::optional<AppIconFolders> getFolderPath(const std::string& basePath, int type) {
    AppIconFolders folders;
    folders.setFolder = filehash::uniquePath(basePath + folderSuffix(setOfType(type)));
    folders.appIconSetFolder = folders.setFolder + "/AppIcon.appiconset";
    if (auto made = io::makeDirectories(folders.appIconSetFolder); made.isError()) {
        logFailure(made.error());
        return std::nullopt;
    }
    return folders;
}

IconExportStatus createIconToPath(const vips::VImage& source, const std::string& basePath,
                                  int type) {
    if (!source.get_image()) {
        logFailure({"no image to export"});
        return IconExportStatus::Written;
    }
    if (source.width() != source.height()) return IconExportStatus::NotSquare;
    auto pixels = workingPixels(source);
    if (!pixels) return IconExportStatus::Written;
    if (type == kIcnsType)
        writeIcnsFile(*pixels, basePath);
    else
        writeIconSet(*pixels, basePath, type);
    return IconExportStatus::Written;
}

} // namespace px::media
