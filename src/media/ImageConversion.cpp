#include "media/ImageConversion.h"

#include "media/AppIconExport.h"
#include "media/ImageFile.h"
#include "support/PathName.h"

namespace px::media {
namespace {

using Result = ConvertOutcome::Result;

bool isIconExport(const std::string& key) {
    return key.find("AppIcon") != std::string::npos;
}

ConvertOutcome exportIcon(const vips::VImage& image, const std::string& base, int iconType) {
    if (createIconToPath(image, base, iconType) == IconExportStatus::NotSquare)
        return {Result::NotSquare, image.width(), image.height()};
    return {Result::Done};
}

ConvertOutcome saveConverted(const vips::VImage& image, const std::string& base,
                             const std::string& key) {
    const std::string destination = base + "." + path::lowercased(key);
    return {saveImageWithExt(image, key, destination) ? Result::Done : Result::Failed};
}

} // namespace

// The image is loaded before the branch, as a gate: what cannot be read is skipped. A PDF
// passes it when its document opens (libvips reads the first page's header only), so a
// readable PDF reaches the page extraction and a broken one is skipped like any image. Only the
// icon export reads its source several times; the other branches stream it once.
ConvertOutcome convertImageFile(const std::string& path, const std::string& key, int iconType,
                                const PdfProgress& progress) {
    const bool icon = isIconExport(key);
    const auto image = loadImage(path, icon ? ImageAccess::Random : ImageAccess::Sequential);
    if (!image) return {};
    const std::string base = path::deletingPathExtension(path);
    if (icon) return exportIcon(*image, base, iconType);
    if (path::lowercased(path::pathExtension(path)) != "pdf")
        return saveConverted(*image, base, key);
    extractImageFromPDF(path, key, progress);
    return {Result::Done};
}

} // namespace px::media
