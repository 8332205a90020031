#include "media/ImageConversion.h"

#include "media/AppIconExport.h"
#include "media/ImageFile.h"
#include "support/PathName.h"

#include <fstream>
#include <string_view>

namespace px::media {
namespace {

using Result = ConvertOutcome::Result;

// About a gigapixel: a 32k x 32k image; more is refused before any pixel is decoded.
constexpr double kMaxImagePixels = 1u << 30;

// TIFF is a container of many layouts; one that no loader here takes is said to have failed
// rather than passed over as "not an image".
bool isTiff(const std::string& path) {
    char magic[4] = {};
    std::ifstream(path, std::ios::binary).read(magic, sizeof magic);
    const std::string_view start(magic, sizeof magic);
    return start == std::string_view("II*\0", 4) || start == std::string_view("MM\0*", 4) ||
           start == std::string_view("II+\0", 4) || start == std::string_view("MM\0+", 4);
}

bool isIconExport(const std::string& key) {
    return key.find("AppIcon") != std::string::npos;
}

ConvertOutcome exportIcon(const vips::VImage& image, const std::string& base, int iconType) {
    if (createIconToPath(image, base, iconType) == IconExportStatus::NotSquare)
        return {Result::NotSquare, image.width(), image.height()};
    return {Result::Done};
}

// A file whose pixels libvips' own loader refuses is read again through the fallback loader.
ConvertOutcome saveConverted(const vips::VImage& image, const std::string& path,
                             const std::string& key) {
    const std::string destination = path::deletingPathExtension(path) + "." + path::lowercased(key);
    if (saveImageWithExt(image, key, destination)) return {Result::Done};
    const std::optional<vips::VImage> again = loadImageThroughFallback(path);
    return {again && saveImageWithExt(*again, key, destination) ? Result::Done : Result::Failed};
}

} // namespace

// A PDF goes to the PDF renderer as a reader opens it (bytes before the header, damaged cross
// references and odd page trees included); one that cannot be read at all is a failure, said
// once. Any other file is loaded first, as a gate: what cannot be read is skipped. Only the icon
// export reads its source several times; the other branches stream it once.
ConvertOutcome convertImageFile(const std::string& path, const std::string& key, int iconType,
                                const PdfProgress& progress) {
    const bool icon = isIconExport(key);
    const bool pdf = path::lowercased(path::pathExtension(path)) == "pdf";
    if (pdf && !icon)
        return {extractImageFromPDF(path, key, progress) ? Result::Done : Result::Failed};
    const auto image = loadImage(path, icon ? ImageAccess::Random : ImageAccess::Sequential);
    if (!image) return {pdf || isTiff(path) ? Result::Failed : Result::Unreadable};
    if (static_cast<double>(image->width()) * image->height() > kMaxImagePixels)
        return {Result::Failed}; // the header claims more than any decoder here should hold
    if (icon) return exportIcon(*image, path::deletingPathExtension(path), iconType);
    return saveConverted(*image, path, key);
}

} // namespace px::media
