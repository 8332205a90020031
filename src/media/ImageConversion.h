#pragma once

#include "media/Imaging.h"

// One file of "Convert to", through libvips: the work behind Imaging::convertImage.
namespace px::media {

ConvertOutcome convertImageFile(const std::string& path, const std::string& key, int iconType,
                                const PdfProgress& progress);

} // namespace px::media
