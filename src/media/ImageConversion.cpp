#include "media/ImageConversion.h"

#include "actions/PathName.h"
#include "media/AppIconExport.h"
#include "media/ImageFile.h"

namespace px::media {
namespace {

using Result = ConvertOutcome::Result;

// About a gigapixel: a 32k x 32k image; more is refused before any pixel is decoded.
constexpr double kMaxImagePixels = 1u << 30;

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
    if (!image) return {pdf ? Result::Failed : Result::Unreadable};
    if (static_cast<double>(image->width()) * image->height() > kMaxImagePixels)
        return {Result::Failed}; // the header claims more than any decoder here should hold
    const std::string base = path::deletingPathExtension(path);
    if (icon) return exportIcon(*image, base, iconType);
    return saveConverted(*image, base, key);
}

} // namespace px::media
