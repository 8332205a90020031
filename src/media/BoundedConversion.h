#pragma once

#include "media/Imaging.h"

#include <string>

// "Convert to" on one file, run by pxmenu-imaging-worker in a child process with its address
// space and processor time limited, under a watchdog that kills it when no page has been done
// for a while (PXMENU_WORK_TIMEOUT seconds, 60 by default): a document or image that makes the
// decoders loop or swell costs one failure, never the caller's memory or its serial queue.
// What a killed worker left (its temporaries beside the file) is removed.
namespace px::media {

ConvertOutcome convertBounded(const std::string& path, const std::string& key, int iconType,
                              const PdfProgress& progress);

} // namespace px::media
